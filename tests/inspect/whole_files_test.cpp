// Files without errors: of the test writer, the samples, and real solvers.
#include "gtest/gtest.h"
#include <cstdlib>
#include <filesystem>

#include "inspect/report.h"
#include "samples/samples.h"
#include "testkit/box_dataset.h"
#include "testkit/small_meshes.h"
#include "testkit/temporary_directory.h"
#include "tests/inspect/checked.h"

namespace {

// Checks the structure and the content of every FLD file below a folder, and returns their number.
int expect_fine(const std::filesystem::path& folder) {
  int count = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.path().extension() != ".fld") continue;
    ++count;
    for (const bool full : {false, true}) {
      inspect::check_files({entry.path().string()}, {.full = full}, [](const inspect::FileReport& report) {
        EXPECT_TRUE(report.is_readable());
        EXPECT_TRUE(report.findings.is_fine())
            << inspect::report_text(report, false, [](const std::string& text) { return text; });
      });
    }
  }
  return count;
}

TEST(WholeFiles, TheSamples) {
  const testkit::TemporaryDirectory directory;
  samples::write_samples(directory.path());
  EXPECT_GT(expect_fine(directory.path()), 4);
}

TEST(WholeFiles, EveryConstruct) {
  for (const testkit::File& file : {inspect_test::small_file(), inspect_test::rich_file()}) {
    const std::string bytes = testkit::to_bytes(file);
    EXPECT_FALSE(inspect_test::finds(bytes, false));
    EXPECT_FALSE(inspect_test::finds(bytes, true));
  }
  EXPECT_EQ(inspect_test::told(inspect_test::small_file()), inspect_test::Lines{});
}

TEST(WholeFiles, BoxesOfEveryShape) {
  using testkit::BoxShape;
  for (const BoxShape shape : {BoxShape::kHexahedra, BoxShape::kPrisms, BoxShape::kPyramids,
                               BoxShape::kTetrahedra, BoxShape::kMixed}) {
    for (const std::int32_t bias : {0, 1}) {
      testkit::BoxOptions options{
          .nx = 10, .ny = 4, .nz = 3, .shape = shape, .volumes = 3, .split = 7, .bias = bias};
      EXPECT_EQ(inspect_test::told(testkit::box_file(options)), inspect_test::Lines{});
      options.split = 0;
      options.layout = {testkit::RegionForm::kArray, testkit::RegionForm::kArray, 20, 4};
      EXPECT_EQ(inspect_test::told(testkit::box_file(options)), inspect_test::Lines{});
    }
  }
}

TEST(WholeFiles, RegionListsWithoutRegions) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces.clear();
  mesh.volumes.clear();
  using testkit::RegionForm;
  for (const RegionForm form : {RegionForm::kPerRegion, RegionForm::kArray}) {
    testkit::File file = testkit::file_of(mesh, {.surface_form = form, .volume_form = form});
    EXPECT_EQ(inspect_test::told(file), inspect_test::Lines{});
    for (testkit::Section& section : file.region_sets.front().sections) {
      if (section.title.text.ends_with("Array"))
        section.blocks.resize(2);  // they may end after the name length
    }
    EXPECT_EQ(inspect_test::told(file), inspect_test::Lines{});
  }
}

TEST(WholeFiles, RealResults) {
  const char* data = std::getenv("FLD_REAL_DATA");
  if (data == nullptr || *data == '\0')
    GTEST_SKIP() << "FLD_REAL_DATA is not set: the solver results are not checked";
  EXPECT_GT(expect_fine(data), 0);
}

}  // namespace
