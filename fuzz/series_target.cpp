// A whole session on a series of two files. The input is a byte (odd: with the simplifying option), followed
// by both files. The second starts with its identification record; without one it is empty.
#include <algorithm>

#include "fuzz/byte_source.h"
#include "fuzz/scratch_directory.h"
#include "fuzz/session_trial.h"
#include "fuzz/target.h"

namespace {

constexpr std::string_view kIdentification("\0\0\0\x08VTRL-FLD", 12);

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::ScratchDirectory scratch;
  fuzz::ByteSource source(fuzz::as_text(data, size));
  const bool simplify = source.byte() % 2 == 1;
  const std::string_view input = source.rest();
  const auto border = std::min(input.find(kIdentification, 1), input.size());
  const auto first = scratch.write("case_1.fld", input.substr(0, border));
  scratch.write("case_2.fld", input.substr(border));
  fuzz::run_session(first, input, {.simplify_sequential = simplify});
  return 0;
}
