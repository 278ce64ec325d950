// The fixture of the tests that use the reader as a host does. Each test loads the plug-in again.
#pragma once

#include "gtest/gtest.h"
#include <filesystem>
#include <string>
#include <string_view>

#include "host/library.h"
#include "testkit/description.h"
#include "testkit/file_writer.h"
#include "testkit/temporary_directory.h"
#include "tests/reader/host_calls.h"
#include "tests/reader/stderr_text.h"

namespace reader_test {

// The time sets.
inline constexpr int kGeometry = 1;
inline constexpr int kVariables = 2;

class LoadedReader : public testing::Test {
 protected:
  const host::EntryPoints& api() const { return library_.entry_points(); }

  // A path in the test's temporary directory.
  std::filesystem::path in(std::string_view name) const { return directory_ / name; }

  std::filesystem::path write(const testkit::File& file, std::string_view name = "case.fld") const {
    testkit::write_file(file, in(name));
    return in(name);
  }

  // Opens a dataset, which must succeed, and drops the messages.
  void open(const std::filesystem::path& path) {
    stderr_of([&] { ASSERT_EQ(1, host.open(path)); });
  }
  void write_and_open(const testkit::File& file) { open(write(file)); }

  // Selects a step and returns the messages.
  std::string select(int set, int step) {
    return stderr_of([&] { api().set_time_set_and_step(set, step); });
  }

  // The line that traces the reading of a file.
  static std::string trace(const std::filesystem::path& path) { return "IN ( FLD): " + path.string() + "\n"; }

 private:
  testkit::TemporaryDirectory directory_;
  host::Library library_{FLD_PLUGIN_FILE};

 protected:
  HostCalls host{api()};
};

}  // namespace reader_test
