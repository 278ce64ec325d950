#include "format/region_lists.h"

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

TrackedArray<char> read_name(FILE* stream, int length, int tag) {
  const std::string text = read_field(stream, length);
  auto name = make_tracked_array<char>(text.size() + 1, tag);
  text.copy(name.get(), text.size());
  return name;
}

TrackedArray<char> copy_name(const char* characters, int length, int tag) {
  auto name = make_tracked_array<char>(static_cast<size_t>(length) + 1, tag);
  std::copy_n(characters, length, name.get());
  cnvt_trimright(name.get(), length);
  return name;
}

}  // namespace fld
