#include "format/read_checks.h"

#include <array>
#include <string>
#include <sys/stat.h>

#include "support/byte_order.h"
#include "support/errors.h"

namespace fld {

namespace {

// Arrays up to this size are allocated without an fstat.
constexpr int64_t kHarmlessBytes = 4096;
// Skips up to this size are read instead of seeked.
constexpr size_t kSmallStep = 2048;

std::string at_byte(FILE* stream) {
  return " AT BYTE " + std::to_string(ftello(stream)) + ".";
}

[[noreturn]] void throw_read_failure(FILE* stream) {
  throw FLDReadException((feof(stream) != 0 ? "UNEXPECTED END OF FILE" : "READ ERROR") + at_byte(stream));
}

int64_t rest_of_file(FILE* stream) {
  struct stat status = {};
  const off_t position = ftello(stream);
  if (position < 0 || fstat(fileno(stream), &status) != 0) throw_read_failure(stream);
  return status.st_size - position;
}

}  // namespace

void read_elements(FILE* stream, void* out, size_t width, size_t n) {
  cnvt_fread(out, width, n, stream);
  if (feof_unlocked(stream) != 0 || ferror_unlocked(stream) != 0) throw_read_failure(stream);
}

void check_count(FILE* stream, int64_t count, size_t bytes_each) {
  if (count < 0) throw FLDReadException("NEGATIVE COUNT " + std::to_string(count) + at_byte(stream));
  const auto each = static_cast<int64_t>(bytes_each);
  if (each == 0 || count <= kHarmlessBytes / each) return;
  if (count > rest_of_file(stream) / each) {
    throw FLDReadException("COUNT " + std::to_string(count) + " EXCEEDS THE REST OF THE FILE" +
                           at_byte(stream));
  }
}

void go_to(FILE* stream, int64_t offset) {
  if (fseeko(stream, offset, SEEK_SET) != 0) throw_read_failure(stream);
}

void step_over(FILE* stream, int length) {
  if (length < 0)
    throw FLDReadException("NEGATIVE RECORD LENGTH " + std::to_string(length) + at_byte(stream));
  if (length == 0) return;
  // fseeko makes a system call even within the stream's buffer.
  std::array<char, kSmallStep> dropped;
  if (length <= static_cast<int>(dropped.size())) {
    const size_t given = fread_unlocked(dropped.data(), 1, static_cast<size_t>(length), stream);
    length -= static_cast<int>(given);
    if (length == 0) return;
    if (ferror_unlocked(stream) != 0) throw_read_failure(stream);
  }
  if (fseeko(stream, length, SEEK_CUR) != 0) throw_read_failure(stream);
}

}  // namespace fld
