#include "format/region_lists.h"

#include <cstring>

#include "support/byte_order.h"

namespace fld {

int read_region_count(FILE* stream, size_t bytes_each) {
  const int count = read_int(stream);
  check_count(stream, count, bytes_each);
  return count;
}

int read_name_length(FILE* stream) {
  const int length = read_int(stream);
  check_count(stream, length, 1);
  return length;
}

void take_name(FILE* stream, int length, int tag, char*& name) {
  const std::string text = read_field(stream, length);
  auto copy = make_tracked_array<char>(text.size() + 1, tag);
  text.copy(copy.get(), text.size());
  name = copy.release();
}

void take_name(FILE* stream, int length, int /*tag*/, std::string& name) {
  name = read_field(stream, length);
}

void copy_name(const char* characters, int length, int tag, char*& name) {
  auto copy = make_tracked_array<char>(static_cast<size_t>(length) + 1, tag);
  std::copy_n(characters, length, copy.get());
  cnvt_trimright(copy.get(), length);
  name = copy.release();
}

void copy_name(const char* characters, int length, int /*tag*/, std::string& name) {
  name.assign(characters, static_cast<size_t>(length));
  cnvt_trimright(name.data(), length);
  name.resize(strlen(name.c_str()));
}

}  // namespace fld
