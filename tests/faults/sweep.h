// Goes through a family of damages with whole sessions of the loaded plug-in in one process, each followed by
// a session over a good dataset, and judges every one of them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "host/library.h"
#include "testkit/temporary_directory.h"
#include "tests/faults/damage.h"
#include "tests/faults/tally.h"
#include "tests/faults/whole_session.h"

namespace faults {

class Sweep {
 public:
  // The plug-in whose assertions throw, and a good dataset to compare with.
  Sweep();

  // Where the damaged file is written; what else belongs to its dataset may be put beside it.
  std::filesystem::path in(std::string_view name) const { return directory_ / name; }

  // Tries every `stride`-th damage of the file `name`, which holds the damaged bytes. After those with odd
  // numbers the good dataset is opened without USERD_exit_routine in between. Each case that is not as it
  // should be is a failure of the current test.
  Tally run(const Damages& damages, std::string_view name, std::size_t stride, SessionOptions options = {});

 private:
  struct Case {
    Outcome outcome;
    std::string complaint;  // empty: as it should be
  };
  Case try_file(const std::filesystem::path& path, std::size_t size, const SessionOptions& options);
  Case judge_sessions(const std::filesystem::path& path, std::size_t size, const SessionOptions& options);

  testkit::TemporaryDirectory directory_;
  host::Library library_;
  std::filesystem::path good_;
  std::uint64_t good_digest_ = 0;
};

// The share of the cases that this run tries: 1 is all of them. The environment variable FLD_SWEEP tells:
// "complete", or nothing for a part.
std::size_t sweep_stride(std::size_t partial);

}  // namespace faults
