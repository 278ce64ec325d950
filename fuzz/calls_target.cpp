// Random calls on valid datasets: the input chooses the calls and their arguments; see call_sequence.cpp.
#include "fuzz/call_sequence.h"
#include "fuzz/changing_files.h"
#include "fuzz/scratch_directory.h"
#include "fuzz/target.h"
#include "fuzz/trial.h"
#include "tests/reader/linked_entry_points.h"

namespace {

// Resets the options to those of a freshly loaded reader.
void reset_options(const host::EntryPoints& api) {
  int toggles[2] = {0, 0};
  api.set_extra_gui_data(toggles, nullptr, nullptr);
  int deliver = 1;
  float undefined = 0.0F;
  api.get_extra_data(&deliver, nullptr, nullptr, nullptr, nullptr, &undefined);
  api.set_time_set_and_step(2, 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::ScratchDirectory scratch;
  static fuzz::ChangingFiles files(scratch);
  const host::EntryPoints& api = reader_test::linked_entry_points();
  const fuzz::Trial trial(size);
  reset_options(api);
  fuzz::CallSequence(api, files, fuzz::as_text(data, size)).run();
  files.restore();
  return 0;
}
