// A whole session on one file: the input is the file.
#include "fuzz/byte_source.h"
#include "fuzz/scratch_directory.h"
#include "fuzz/session_trial.h"
#include "fuzz/target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::ScratchDirectory scratch;
  const std::string_view input = fuzz::as_text(data, size);
  fuzz::run_session(scratch.write("case.fld", input), input);
  return 0;
}
