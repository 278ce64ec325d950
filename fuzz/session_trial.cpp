#include "fuzz/session_trial.h"

#include "fuzz/trial.h"
#include "tests/reader/linked_entry_points.h"

namespace fuzz {

void run_session(const std::filesystem::path& file, std::size_t file_size,
                 const faults::SessionOptions& options) {
  const Trial trial(file_size);
  const faults::Ending ending = faults::whole_session(reader_test::linked_entry_points(), file, options);
  if (ending.outcome == faults::Outcome::kBrokenPromise) report_broken_promise(ending.detail.c_str());
}

}  // namespace fuzz
