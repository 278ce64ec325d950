// The pieces of a dataset add up to the dataset.
#include <algorithm>
#include <array>
#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <vtkCellData.h>
#include <vtkInformation.h>
#include <vtkInformationStringKey.h>
#include <vtkPointData.h>

#include "samples/samples.h"
#include "testkit/box_dataset.h"
#include "testkit/file_writer.h"
#include "testkit/small_meshes.h"
#include "testkit/temporary_directory.h"
#include "tests/paraview/paraview_reader.h"

namespace paraview_test {
namespace {

// The points of the grid's cells with their values, one line of numbers per cell.
using Corner = std::array<double, 4>;
using CellLines = std::vector<std::vector<Corner>>;

CellLines cell_lines(vtkUnstructuredGrid* grid) {
  vtkDataArray* pressure = grid->GetPointData()->GetArray("Pressure");
  vtkDataArray* material = grid->GetCellData()->GetArray("MatOfElements");
  CellLines lines;
  for (vtkIdType cell = 0; cell < grid->GetNumberOfCells(); ++cell) {
    std::vector<Corner> line;
    line.push_back({static_cast<double>(grid->GetCellType(cell)), material->GetComponent(cell, 0)});
    vtkIdType count = 0;
    const vtkIdType* corners = nullptr;
    grid->GetCellPoints(cell, count, corners);
    for (vtkIdType i = 0; i < count; ++i) {
      const double* x = grid->GetPoint(corners[i]);
      line.push_back({x[0], x[1], x[2], pressure->GetComponent(corners[i], 0)});
    }
    lines.push_back(std::move(line));
  }
  return lines;
}

// Compares NaN, the value of a missing material, as equal.
bool are_same(const CellLines& a, const CellLines& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& left, const auto& right) {
    return left.size() == right.size() &&
           std::memcmp(left.data(), right.data(), left.size() * sizeof(Corner)) == 0;
  });
}

TEST(Pieces, TogetherAreTheWhole) {
  const testkit::TemporaryDirectory directory;
  for (const samples::SampleInfo& sample : samples::write_samples(directory.path())) {
    Reader whole(sample.file);
    ASSERT_TRUE(whole.update());
    for (const int pieces : {2, 3, 5}) {
      SCOPED_TRACE(sample.name + " in pieces: " + std::to_string(pieces));
      std::map<std::string, CellLines> together;
      for (int piece = 0; piece < pieces; ++piece) {
        Reader reader(sample.file);
        ASSERT_TRUE(reader.update_piece(piece, pieces));
        ASSERT_EQ(reader.shown_parts(), whole.shown_parts());
        for (const std::string& part : reader.shown_parts()) {
          const CellLines lines = cell_lines(reader.grid(part));
          CellLines& all = together[part];
          all.insert(all.end(), lines.begin(), lines.end());
        }
      }
      for (const std::string& part : whole.shown_parts())
        EXPECT_TRUE(are_same(together[part], cell_lines(whole.grid(part)))) << part;
    }
  }
}

TEST(Pieces, HaveTheNamesAndUnitsOfTheValues) {
  const testkit::TemporaryDirectory directory;
  const samples::SampleInfo sample = samples::write_samples(directory.path()).front();
  for (const int pieces : {1, 2}) {
    Reader reader(sample.file);
    ASSERT_TRUE(reader.update_piece(pieces - 1, pieces));
    vtkDataArray* pressure = reader.grid("wake")->GetPointData()->GetArray("Pressure");
    ASSERT_NE(pressure, nullptr);
    EXPECT_STREQ(pressure->GetInformation()->Get(vtkDataArray::UNITS_LABEL()), "Pa");
  }
}

// ParaView writes units into XML, which cannot hold control characters.
TEST(Pieces, HaveUnitsWithoutControlCharacters) {
  const testkit::TemporaryDirectory directory;
  testkit::File file = testkit::file_of(testkit::one_tetrahedron());
  file.region_sets[0].add(
      testkit::scalar_section({.name = "p", .label = "Pressure [k\x01\nPa]", .values = {1, 2, 3, 4}}));
  testkit::write_file(file, directory / "case.fld");
  Reader reader(directory / "case.fld");
  ASSERT_TRUE(reader.update());
  vtkDataArray* pressure = reader.grid("wall")->GetPointData()->GetArray("p");
  ASSERT_NE(pressure, nullptr);
  EXPECT_STREQ(pressure->GetInformation()->Get(vtkDataArray::UNITS_LABEL()), "k  Pa");
}

// Cells of other pieces around them are for several processes alone.
TEST(Pieces, HaveNoGhostCells) {
  const testkit::TemporaryDirectory directory;
  testkit::write_box_dataset(directory / "box.fld", {.nx = 4, .ny = 4, .nz = 4});
  Reader reader(directory / "box.fld");
  ASSERT_TRUE(reader.update_piece(0, 2, 1));
  EXPECT_EQ(reader.grid("volume_1")->GetNumberOfCells(), 32);
  EXPECT_FALSE(reader.grid("volume_1")->GetCellData()->HasArray("vtkGhostType"));
}

TEST(Pieces, HoldNoMorePointsThanTheirCellsUse) {
  const testkit::TemporaryDirectory directory;
  const samples::SampleInfo sample = samples::write_samples(directory.path()).front();
  Reader reader(sample.file);
  ASSERT_TRUE(reader.update());
  const vtkIdType all = reader.grid("wake")->GetNumberOfPoints();
  ASSERT_TRUE(reader.update_piece(0, 4));
  EXPECT_LT(reader.grid("wake")->GetNumberOfPoints(), all * 4 / 10);
}

}  // namespace
}  // namespace paraview_test
