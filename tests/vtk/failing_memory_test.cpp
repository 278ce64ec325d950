// The 1st, 2nd, 3rd ... request for memory of vtk/ and host/ fails, until none does: an exception, and
// afterwards the same grids as before.
#include "tests/support/failing_memory.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <new>
#include <string>
#include <vector>

#include "host/error.h"
#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "testkit/temporary_directory.h"
#include "tests/host/open_file.h"
#include "vtk/grid_file.h"
#include "vtk/part_grid.h"

namespace {

testkit::File file_with_quantities() {
  testkit::File file = testkit::file_of(testkit::one_of_each());
  const std::vector<double> values = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
  file.region_sets[0].add(testkit::scalar_section({.name = "p", .label = "p", .values = values}));
  file.region_sets[0].add(
      testkit::vector_section({.name = "v", .label = "v", .x = values, .y = values, .z = values}));
  return file;
}

class FailingMemoryOfGrids : public testing::Test {
 protected:
  FailingMemoryOfGrids() {
    testkit::write_file(file_with_quantities(), directory_ / "case.fld");
    reader_.session().open(directory_ / "case.fld");
  }

  // Makes and writes the grids of all parts. Returns the contents of their files.
  std::vector<std::string> grids() {
    std::vector<std::string> contents;
    for (const host::Part& part : reader_.session().parts()) {
      const auto grid = vtkdata::make_part_grid(reader_.session(), part.number);
      for (const host::Variable& variable : reader_.session().variables())
        vtkdata::add_values(grid, reader_.session(), variable.number, part.number, variable.name);
      const std::filesystem::path file = directory_ / "part.vtu";
      EXPECT_TRUE(vtkdata::write_grid(file, grid));
      std::ifstream stream(file, std::ios::binary);
      contents.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }
    return contents;
  }

 private:
  testkit::TemporaryDirectory directory_;
  host_test::Reader reader_;
};

TEST_F(FailingMemoryOfGrids, IsAnExceptionAndNothingElse) {
  const std::vector<std::string> before = grids();
  ASSERT_EQ(before.size(), 5U);
  int failed = 0;
  for (int request = 1;; ++request) {
    bool was_thrown = false;
    {
      const FailingMemory failing(request);
      try {
        grids();
      } catch (const std::bad_alloc&) {
        was_thrown = true;
      } catch (const host::Error&) {
        was_thrown = true;
      }
    }
    if (!FailingMemory::has_failed()) break;
    ++failed;
    EXPECT_TRUE(was_thrown) << "request " << request;
    ASSERT_TRUE(grids() == before) << "after request " << request;
  }
  EXPECT_GT(failed, 100);
}

}  // namespace
