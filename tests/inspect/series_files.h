// A folder with files of a series, and the findings of a check.
#pragma once

#include <string>
#include <vector>

#include "inspect/check.h"
#include "testkit/file_writer.h"
#include "testkit/temporary_directory.h"
#include "tests/inspect/checked.h"

namespace inspect_test {

class SeriesFiles {
 public:
  // Writes the file and returns the offsets of its parts.
  Written add(const std::string& name, const testkit::File& file) const {
    Written written(file);
    testkit::write_bytes(directory_ / name, written.bytes);
    return written;
  }
  std::string path(const std::string& name) const { return (directory_ / name).string(); }

  // The reports of a full check of this file.
  std::vector<inspect::FileReport> check(const std::string& name, bool alone = false) const {
    std::vector<inspect::FileReport> reports;
    inspect::check_files({path(name)}, {.full = true, .alone = alone},
                         [&](const inspect::FileReport& report) { reports.push_back(report); });
    return reports;
  }

 private:
  testkit::TemporaryDirectory directory_;
};

// The small file at a cycle and time.
testkit::File small_file_at(std::int32_t cycle, double time);

}  // namespace inspect_test
