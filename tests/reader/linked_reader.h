// The fixture of the tests linked with the reader's modules, which can access its state. Each test starts
// with the state after loading.
#pragma once

#include "gtest/gtest.h"
#include <filesystem>
#include <string>
#include <string_view>

#include "dataset/geometry.h"
#include "testkit/description.h"
#include "testkit/file_writer.h"
#include "testkit/temporary_directory.h"
#include "tests/reader/host_calls.h"
#include "tests/reader/linked_entry_points.h"
#include "tests/reader/stderr_text.h"

namespace reader_test {

// Resets the reader's state to that after loading.
void reset_reader();

class LinkedReader : public testing::Test {
 public:
  LinkedReader() { reset_reader(); }
  ~LinkedReader() override { reset_reader(); }

 protected:
  const host::EntryPoints& api() const { return linked_entry_points(); }
  std::filesystem::path in(std::string_view name) const { return directory_ / name; }
  std::filesystem::path write(const testkit::File& file, std::string_view name = "case.fld") const {
    testkit::write_file(file, in(name));
    return in(name);
  }
  void open(const std::filesystem::path& path) {
    stderr_of([&] { ASSERT_EQ(1, host.open(path)); });
  }
  void write_and_open(const testkit::File& file) { open(write(file)); }
  std::string select(int set, int step) {
    return stderr_of([&] { api().set_time_set_and_step(set, step); });
  }
  // The geometry of these meshes, one region set each, read from a file.
  fld::smart_ptr<fld::Geometry> geometry_of(const std::vector<testkit::Mesh>& meshes) const;

 private:
  testkit::TemporaryDirectory directory_;

 protected:
  HostCalls host{linked_entry_points()};
};

}  // namespace reader_test
