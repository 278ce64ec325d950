// The reader on several ranks, each of which shows its share of a dataset.
#include <algorithm>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>
#include <vtkCellData.h>
#include <vtkDataAssembly.h>
#include <vtkDataSetAttributes.h>
#include <vtkIdTypeArray.h>
#include <vtkPointData.h>
#include <vtkUnsignedCharArray.h>

#include "testkit/box_dataset.h"
#include "testkit/box_values.h"
#include "testkit/temporary_directory.h"
#include "tests/paraview/controller_ranks.h"
#include "tests/paraview/paraview_reader.h"

namespace paraview_test {
namespace {

using Names = std::vector<std::string>;

// What a rank shows of "volume_1".
struct Share {
  vtkIdType cells = 0;
  vtkIdType ghosts = 0;                      // of these
  std::map<vtkIdType, double> values;        // of "scalar_1", by global node number
  std::map<vtkIdType, double> heights;       // z likewise
  std::vector<unsigned char> marked_points;  // empty without marks
};

Share share_of(Reader& reader) {
  Share share;
  vtkUnstructuredGrid* grid = reader.grid("volume_1");
  if (grid == nullptr) return share;
  share.cells = grid->GetNumberOfCells();
  const char* name = vtkDataSetAttributes::GhostArrayName();
  if (auto* marks = vtkUnsignedCharArray::SafeDownCast(grid->GetCellData()->GetArray(name))) {
    const unsigned char* first = marks->GetPointer(0);
    share.ghosts = std::count(first, first + share.cells, vtkDataSetAttributes::DUPLICATECELL);
  }
  if (auto* marks = vtkUnsignedCharArray::SafeDownCast(grid->GetPointData()->GetArray(name)))
    share.marked_points = {marks->GetPointer(0), marks->GetPointer(0) + marks->GetNumberOfValues()};
  auto* ids = vtkIdTypeArray::SafeDownCast(grid->GetPointData()->GetGlobalIds());
  vtkDataArray* values = grid->GetPointData()->GetArray("scalar_1");
  if (ids == nullptr || values == nullptr) return share;
  for (vtkIdType i = 0; i < grid->GetNumberOfPoints(); ++i) {
    share.values[ids->GetValue(i)] = values->GetComponent(i, 0);
    share.heights[ids->GetValue(i)] = grid->GetPoint(i)[2];
  }
  return share;
}

class Ranks : public testing::Test {
 protected:
  // A series of cubes of 4 x 4 x 4 cells; the second file has the mesh again if it moves.
  std::filesystem::path cubes(bool moves = false) {
    for (int step = 0; step < 2; ++step) {
      const testkit::BoxOptions options{.nx = 4, .ny = 4, .nz = 4, .cycle = step, .time = 0.5 * step};
      testkit::write_file(step == 0 || moves ? testkit::box_file(options) : testkit::box_values_file(options),
                          directory_ / ("cube_" + std::to_string(step) + ".fld"));
    }
    return directory_ / "cube_0.fld";
  }

  // What `work` gives on each rank.
  template <typename Result>
  static std::vector<Result> on_ranks(int size, const std::filesystem::path& file,
                                      const std::function<Result(Reader&, int)>& work) {
    std::vector<Result> results(static_cast<std::size_t>(size));
    run_on_ranks(size, [&](vtkMultiProcessController* controller) {
      Reader reader(file);
      reader->SetController(controller);
      const int rank = controller->GetLocalProcessId();
      results[static_cast<std::size_t>(rank)] = work(reader, rank);
    });
    return results;
  }

  testkit::TemporaryDirectory directory_;
};

TEST_F(Ranks, ShowEveryCellOnceWithTheValuesOfItsNodes) {
  const auto shares = on_ranks<Share>(3, cubes(), [](Reader& reader, int) {
    EXPECT_TRUE(reader.update());
    return share_of(reader);
  });
  EXPECT_EQ(shares[0].cells + shares[1].cells + shares[2].cells, 64);
  std::map<vtkIdType, double> values;
  for (const Share& share : shares) {
    EXPECT_TRUE(share.cells == 21 || share.cells == 22) << share.cells;
    EXPECT_EQ(share.ghosts, 0);
    EXPECT_TRUE(share.marked_points.empty());
    values.insert(share.values.begin(), share.values.end());
    for (const auto& [node, z] : share.heights) EXPECT_EQ(z, 0.25 * static_cast<double>(node / 25));
  }
  ASSERT_EQ(values.size(), 125U);
  for (const auto& [node, value] : values) {
    const double x = 0.25 * static_cast<double>(node % 5);
    const double y = 0.25 * static_cast<double>(node / 5 % 5);
    const double z = 0.25 * static_cast<double>(node / 25);
    EXPECT_FLOAT_EQ(static_cast<float>(value), static_cast<float>(testkit::box_scalar(1, x, y, z)));
  }
}

// Each of two ranks has two of the four layers of cells.
TEST_F(Ranks, HaveAsManyLayersOfGhostCellsAsAnybodyAskedFor) {
  const auto shares = on_ranks<std::vector<Share>>(2, cubes(), [](Reader& reader, int rank) {
    std::vector<Share> seen;
    for (const int layers : {0, 1, 2, 1}) {
      EXPECT_TRUE(reader.update_piece(rank, 2, layers));
      seen.push_back(share_of(reader));
    }
    return seen;
  });
  const vtkIdType ghosts[] = {0, 16, 32, 32};
  for (const std::vector<Share>& seen : shares) {
    for (std::size_t i = 0; i < 4; ++i) {
      EXPECT_EQ(seen[i].cells, 32 + ghosts[i]);
      EXPECT_EQ(seen[i].ghosts, ghosts[i]);
    }
    EXPECT_TRUE(seen[0].marked_points.empty());
    EXPECT_EQ(seen[1].marked_points.size(), 100U);
  }
  // The nodes between the two are the first one's.
  const auto marked = [&](std::size_t rank) {
    const std::vector<unsigned char>& marks = shares[rank][1].marked_points;
    return std::count(marks.begin(), marks.end(), vtkDataSetAttributes::DUPLICATEPOINT);
  };
  EXPECT_EQ(marked(0), 25);
  EXPECT_EQ(marked(1), 50);
}

TEST_F(Ranks, KnowTheDatasetThatTheFirstOpens) {
  const auto opens = [](Reader& reader, int) {
    EXPECT_TRUE(reader.open());
    EXPECT_EQ(reader.times(), (std::vector<double>{0.0, 0.5}));
    EXPECT_EQ(reader->GetAssembly()->GetDataSetIndices(0).size(), 8U);
    return reader.part_names();
  };
  for (const Names& names : on_ranks<Names>(2, cubes(), opens)) {
    EXPECT_EQ(names,
              (Names{"x_low", "x_high", "y_low", "y_high", "z_low", "z_high", "volume_1", "ALL_ELEMENTS"}));
  }
}

TEST_F(Ranks, ShowWhatIsOnAtTheFirst) {
  const auto shows = [](Reader& reader, int rank) {
    EXPECT_TRUE(reader.open());
    reader.show_only(rank == 0 ? "volume_1" : "x_low");
    reader->SetPointArrayStatus(rank == 0 ? "scalar_2" : "scalar_1", 0);
    EXPECT_TRUE(reader.update(0.5));
    EXPECT_TRUE(reader.grid("volume_1")->GetPointData()->HasArray("scalar_1"));
    EXPECT_FALSE(reader.grid("volume_1")->GetPointData()->HasArray("scalar_2"));
    return reader.shown_parts();
  };
  for (const Names& shown : on_ranks<Names>(2, cubes(), shows)) EXPECT_EQ(shown, Names{"volume_1"});
}

TEST_F(Ranks, HaveOneErrorOfADatasetThatDoesNotOpen) {
  const auto errors = on_ranks<Names>(2, directory_ / "none.fld", [](Reader& reader, int) {
    EXPECT_FALSE(reader.open());
    EXPECT_FALSE(reader.update());
    return reader.take_errors();
  });
  ASSERT_EQ(errors[0].size(), 1U);
  EXPECT_NE(errors[0][0].find("none.fld: there is no such file"), std::string::npos) << errors[0][0];
  EXPECT_EQ(errors[1], Names{});
}

TEST_F(Ranks, HaveOneErrorOfAStepWithoutMesh) {
  const std::filesystem::path file = cubes(true);
  const auto errors = on_ranks<Names>(2, file, [&](Reader& reader, int rank) {
    EXPECT_TRUE(reader.update());
    // Nobody reads while the first rank cuts the file: they wait for its plan of the step.
    if (rank == 0) std::filesystem::resize_file(directory_ / "cube_1.fld", 600);
    EXPECT_FALSE(reader.update(0.5));
    Names found = reader.take_errors();
    EXPECT_TRUE(reader.update());
    EXPECT_EQ(share_of(reader).cells, 32);
    return found;
  });
  ASSERT_EQ(errors[0].size(), 1U);
  EXPECT_NE(errors[0][0].find("cannot read step 1 of "), std::string::npos) << errors[0][0];
  EXPECT_EQ(errors[1], Names{});
}

// A message for each of the three variables.
TEST_F(Ranks, HaveTheErrorsOfTheValuesOnce) {
  const auto errors = on_ranks<Names>(2, cubes(), [&](Reader& reader, int rank) {
    EXPECT_TRUE(reader.update());
    if (rank == 0) std::filesystem::resize_file(directory_ / "cube_1.fld", 400);
    EXPECT_TRUE(reader.update(0.5));
    EXPECT_EQ(share_of(reader).cells, 32);
    return reader.take_errors();
  });
  EXPECT_EQ(errors[0].size(), 3U);
  EXPECT_EQ(errors[1], Names{});
}

}  // namespace
}  // namespace paraview_test
