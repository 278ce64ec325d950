// Tries a family of damages with whole sessions of the loaded plug-in in one process, each followed by a
// session over a valid dataset, and judges every session.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "host/library.h"
#include "testkit/temporary_directory.h"
#include "tests/faults/damage.h"
#include "tests/faults/sweep_stride.h"
#include "tests/faults/tally.h"
#include "tests/faults/whole_session.h"

namespace faults {

class Sweep {
 public:
  // The plug-in whose assertions throw, and a valid dataset to compare with.
  Sweep();

  // The path of the damaged file; other files of its dataset can be written next to it.
  std::filesystem::path in(std::string_view name) const { return directory_ / name; }

  // Writes every `stride`-th damage to the file `name` and tries it. After odd numbers the valid dataset is
  // opened without USERD_exit_routine in between. Every wrong case is a failure of the current test.
  Tally run(const Damages& damages, std::string_view name, std::size_t stride, SessionOptions options = {});

 private:
  struct Case {
    Outcome outcome;
    std::string complaint;  // empty if correct
  };
  Case try_file(const std::filesystem::path& path, std::size_t size, const SessionOptions& options);
  Case judge_sessions(const std::filesystem::path& path, std::size_t size, const SessionOptions& options);

  testkit::TemporaryDirectory directory_;
  host::Library library_;
  std::filesystem::path good_;
  std::uint64_t good_digest_ = 0;
};

}  // namespace faults
