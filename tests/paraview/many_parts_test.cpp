// Datasets of very many parts.
#include <ctime>
#include <gtest/gtest.h>

#include "testkit/file_writer.h"
#include "testkit/small_meshes.h"
#include "testkit/temporary_directory.h"
#include "tests/paraview/paraview_reader.h"

namespace paraview_test {
namespace {

TEST(ManyParts, AreAllThereWithTheirNames) {
  constexpr int kParts = 20000;
  testkit::Mesh mesh = testkit::one_tetrahedron();
  const testkit::Surface wall = mesh.surfaces.front();
  mesh.surfaces.clear();
  for (int i = 0; i < kParts; ++i) {
    mesh.surfaces.push_back(wall);
    mesh.surfaces.back().name = "part_" + std::to_string(i);
  }
  const testkit::TemporaryDirectory directory;
  testkit::write_file(testkit::file_of(mesh, {.surface_form = testkit::RegionForm::kArray}),
                      directory / "many.fld");
  Reader reader(directory / "many.fld");
  const std::clock_t start = std::clock();
  ASSERT_TRUE(reader.open_as_it_is());
  // It takes a tenth of a second; once it was 25.
  EXPECT_LT(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, 1.0);
  ASSERT_TRUE(reader.open());
  ASSERT_EQ(reader->GetNumberOfPartArrays(), kParts + 2);
  ASSERT_TRUE(reader.update());
  ASSERT_EQ(reader.output()->GetNumberOfPartitionedDataSets(), static_cast<unsigned>(kParts) + 1);
  ASSERT_NE(reader.grid("part_19999"), nullptr);
  EXPECT_EQ(reader.grid("part_19999")->GetNumberOfCells(), 4);
}

}  // namespace
}  // namespace paraview_test
