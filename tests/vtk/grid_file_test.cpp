// Grids as XML files, read back by VTK's own reader.
#include "vtk/grid_file.h"

#include <gtest/gtest.h>
#include <vtkCellArray.h>
#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkXMLUnstructuredGridReader.h>

#include "testkit/byte_sink.h"
#include "testkit/temporary_directory.h"

namespace {

using vtkdata::Compression;

class GridFile : public testing::TestWithParam<Compression> {
 protected:
  GridFile() {
    vtkNew<vtkPoints> points;
    for (int i = 0; i < 4; ++i) points->InsertNextPoint(i, i % 2, i / 2);
    grid_->SetPoints(points);
    const vtkIdType corners[] = {0, 1, 2, 3};
    grid_->InsertNextCell(VTK_TETRA, 4, corners);
  }

  testkit::TemporaryDirectory directory_;
  vtkNew<vtkUnstructuredGrid> grid_;
};

TEST_P(GridFile, IsReadBackByVtk) {
  const auto path = directory_ / "grid.vtu";
  ASSERT_TRUE(vtkdata::write_grid(path, grid_, GetParam()));
  vtkNew<vtkXMLUnstructuredGridReader> reader;
  reader->SetFileName(path.c_str());
  reader->Update();
  vtkUnstructuredGrid* const read = reader->GetOutput();
  ASSERT_EQ(4, read->GetNumberOfPoints());
  for (int i = 0; i < 4; ++i) {
    const double* const point = read->GetPoint(i);
    EXPECT_EQ(i, point[0]);
    EXPECT_EQ(i % 2, point[1]);
    EXPECT_EQ(i / 2, point[2]);
  }
  ASSERT_EQ(1, read->GetNumberOfCells());
  EXPECT_EQ(VTK_TETRA, read->GetCellType(0));
  const vtkIdType* corners = nullptr;
  vtkIdType count = 0;
  read->GetCells()->GetCellAtId(0, count, corners);
  EXPECT_EQ((std::vector<vtkIdType>{0, 1, 2, 3}), std::vector<vtkIdType>(corners, corners + count));
}

// VTK's reader gives its parser blocks of 4,096 bytes, and some parsers tell it of the data a block late.
TEST_P(GridFile, HasTwoBlocksOfBlanksBeforeTheData) {
  const auto path = directory_ / "grid.vtu";
  ASSERT_TRUE(vtkdata::write_grid(path, grid_, GetParam()));
  const std::string bytes = testkit::read_bytes(path);
  const std::size_t tag = bytes.find("<AppendedData encoding=\"raw\">");
  ASSERT_NE(std::string::npos, tag);
  const std::size_t blanks = bytes.find('>', tag) + 1;
  const std::size_t data = bytes.find_first_not_of(" \n", blanks);
  ASSERT_NE(std::string::npos, data);
  EXPECT_EQ('_', bytes[data]);
  EXPECT_LE(8192U, data - blanks);
  EXPECT_GT(8192U + 100, data - blanks);
}

TEST_P(GridFile, TellsHowItIsCompressed) {
  const auto path = directory_ / "grid.vtu";
  ASSERT_TRUE(vtkdata::write_grid(path, grid_, GetParam()));
  const std::string bytes = testkit::read_bytes(path);
  const auto tells = [&](const char* compressor) { return bytes.find(compressor) != std::string::npos; };
  EXPECT_EQ(tells(" compressor="), GetParam() != Compression::none);
  EXPECT_EQ(tells(" compressor=\"vtkLZ4DataCompressor\""), GetParam() == Compression::lz4);
  EXPECT_EQ(tells(" compressor=\"vtkZLibDataCompressor\""), GetParam() == Compression::zlib);
  EXPECT_TRUE(tells(" header_type=\"UInt64\""));
}

TEST_P(GridFile, ThatCannotBeWrittenIsToldOf) {
  EXPECT_FALSE(vtkdata::write_grid("/dev/full", grid_, GetParam()));
}

INSTANTIATE_TEST_SUITE_P(All, GridFile,
                         testing::Values(Compression::none, Compression::lz4, Compression::zlib));

}  // namespace
