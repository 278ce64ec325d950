// FLD::searchFLD: from the selected file to the list of the dataset's files.
#include <filesystem>
#include <sys/stat.h>

#include "dataset/fld.h"
#include "testkit/byte_sink.h"
#include "tests/dataset/dataset_test.h"

namespace fld {
namespace {

constexpr char kSearch[] = "int FLD::searchFLD(const char *, std::vector<std::string> &) const";

std::vector<std::string> found_for(const std::string& path) {
  std::vector<std::string> files;
  EXPECT_EQ(FLD().searchFLD(path.c_str(), files), 0);
  return files;
}

TEST(SearchFld, FindsTheSeriesOfThePickedFileInCycleOrder) {
  const testkit::TemporaryDirectory directory;
  for (const char* name :
       {"case_0100.fld", "case_0200.fld", "CASE_0300.FLD", "case_0400.bak", "case2_0500.fld"}) {
    testkit::write_bytes(directory / name, "");
  }
  const std::string folder = directory.path().string();
  EXPECT_EQ(found_for(folder + "/case_0200.fld"),
            (std::vector<std::string>{folder + "/case_0100.fld", folder + "/case_0200.fld",
                                      folder + "/CASE_0300.FLD", folder + "/case_0400.bak"}));
}

TEST(SearchFld, ReplacesTheListByTheSeries) {
  const testkit::TemporaryDirectory directory;
  testkit::write_bytes(directory / "case_1.fld", "");
  const std::string path = (directory / "case_1.fld").string();
  std::vector<std::string> files = {"of another dataset"};
  EXPECT_EQ(FLD().searchFLD(path.c_str(), files), 0);
  EXPECT_EQ(files, std::vector<std::string>{path});
}

TEST(SearchFld, FileWithoutCycleIsTheWholeListWithoutALookAtTheFolder) {
  EXPECT_EQ(found_for("/no such folder/mesh.fld"), std::vector<std::string>{"/no such folder/mesh.fld"});
  EXPECT_EQ(found_for("mesh.fldx"), std::vector<std::string>{"mesh.fldx"});
  EXPECT_EQ(found_for(".//d/../mesh.FLD"), std::vector<std::string>{".//d/../mesh.FLD"});
}

TEST(SearchFld, WrongExtensionFailsWithItsMessage) {
  const testkit::TemporaryDirectory directory;
  testkit::write_bytes(directory / "case_10.dat", "");
  testkit::write_bytes(directory / "case_10.fld", "");
  for (const char* name : {"case_10.dat", "case_10.gz", "case_10.fl", "case_10", "mesh."}) {
    std::vector<std::string> files = {"untouched"};
    test::Messages messages;
    EXPECT_EQ(FLD().searchFLD((directory / name).c_str(), files), -2) << name;
    EXPECT_EQ(messages.text(), "error : invalid file extension.\n") << name;
    EXPECT_EQ(files, std::vector<std::string>{"untouched"}) << name;
  }
}

TEST(SearchFld, SeriesWithoutFolderIsEmpty) {
  EXPECT_EQ(found_for("case_1.fld"), std::vector<std::string>{});
  FLD fld;
  test::Messages messages;
  EXPECT_EQ(fld.searchFLD("case_1.fld"), 0);
  EXPECT_EQ(messages.text(), "");
  EXPECT_TRUE(fld.m_fld.empty());
}

TEST(SearchFld, SeriesWhoseEntriesDoNotMatchIsEmpty) {
  const testkit::TemporaryDirectory directory;
  // Five characters follow the digits.
  const std::string path = test::write(directory, "case_1.fldx", test::plain_file());
  EXPECT_EQ(found_for(path), std::vector<std::string>{});
}

TEST(SearchFld, SeriesUnderALongPathIsFound) {
  const testkit::TemporaryDirectory directory;
  std::filesystem::path folder = directory.path();
  for (int level = 0; level < 15; ++level) folder /= std::string(200, static_cast<char>('a' + level));
  std::filesystem::create_directories(folder);
  ASSERT_GT(folder.string().size(), 3000U);
  const std::string base(200, 'x');
  testkit::write_file(test::plain_file(1), folder / (base + "_1.fld"));
  testkit::write_file(test::plain_file(2), folder / (base + "_2.fld"));
  FLD fld;
  EXPECT_EQ(fld.searchFLD((folder / (base + "_2.fld")).c_str()), 0);
  ASSERT_EQ(fld.m_fld.size(), 2U);
  EXPECT_EQ(fld.m_fld[0].m_path, (folder / (base + "_1.fld")).string());
  EXPECT_EQ(fld.m_fld[1].m_path, (folder / (base + "_2.fld")).string());
}

TEST(SearchFldDeathTest, NullPathIsAnAssertion) {
  std::vector<std::string> files;
  EXPECT_ASSERTION(FLD().searchFLD(nullptr, files), "fld", kSearch, "fldpath");
  EXPECT_ASSERTION(FLD().searchFLD(nullptr), "fld", kSearch, "fldpath");
}

TEST(OpenFld, ListsTheValidatedFiles) {
  const testkit::TemporaryDirectory directory;
  test::write(directory, "case_20.fld", test::plain_file(20, 0.5));
  const std::string path = test::write(directory, "case_3.fld", test::plain_file(3, 0.25));
  FLD fld;
  test::Messages messages;
  EXPECT_EQ(fld.searchFLD(path.c_str()), 0);
  EXPECT_EQ(messages.text(), "");
  ASSERT_EQ(fld.m_fld.size(), 2U);
  EXPECT_EQ(fld.m_fld[0].m_cycle, 3);
  EXPECT_EQ(fld.m_fld[0].m_time, 0.25);
  EXPECT_EQ(fld.m_fld[1].m_cycle, 20);
  EXPECT_EQ(fld.m_fld[1].m_time, 0.5);
  EXPECT_FALSE(test::is_open(path));
}

TEST(OpenFld, FilesOfEqualCycleBothStay) {
  const testkit::TemporaryDirectory directory;
  test::write(directory, "case_1.fld", test::plain_file());
  const std::string path = test::write(directory, "case_01.fld", test::plain_file());
  FLD fld;
  EXPECT_EQ(fld.searchFLD(path.c_str()), 0);
  EXPECT_EQ(fld.m_fld.size(), 2U);
}

TEST(OpenFld, WrongExtensionLeavesNoFiles) {
  FLD fld;
  fld.m_fld.emplace_back("of another dataset");
  test::Messages messages;
  EXPECT_EQ(fld.searchFLD("/d/case_10.dat"), -1);
  EXPECT_EQ(messages.text(), "error : invalid file extension.\n");
  EXPECT_TRUE(fld.m_fld.empty());
}

TEST(OpenFld, InvalidFileKeepsTheFilesBeforeIt) {
  const testkit::TemporaryDirectory directory;
  const std::string path = test::write(directory, "case_1.fld", test::plain_file());
  testkit::write_bytes(directory / "case_2.fld", "something else altogether");
  std::filesystem::create_directory(directory / "case_3.fld");
  FLD fld;
  test::Messages messages;
  EXPECT_EQ(fld.searchFLD(path.c_str()), -2);
  EXPECT_EQ(messages.text(), "This is not FLD file.\n");
  ASSERT_EQ(fld.m_fld.size(), 1U);
  EXPECT_EQ(fld.m_fld[0].m_path, path);
}

TEST(OpenFld, FolderAndPipeInASeriesCannotBeOpened) {
  const testkit::TemporaryDirectory directory;
  const std::string path = test::write(directory, "case_1.fld", test::plain_file());
  const std::string odd = (directory / "case_2.fld").string();
  const auto expect_failure = [&] {
    test::Messages messages;
    EXPECT_EQ(FLD().searchFLD(path.c_str()), -2);
    EXPECT_EQ(messages.text(), "FAILED TO OPEN " + odd + "\n");
  };
  std::filesystem::create_directory(odd);
  expect_failure();
  std::filesystem::remove(odd);
  ASSERT_EQ(mkfifo(odd.c_str(), 0600), 0);
  expect_failure();
}

TEST(OpenFld, SeriesWithoutTimesIsNotTransient) {
  const testkit::TemporaryDirectory directory;
  test::write(directory, "case_1.fld", test::plain_file(1, 0.0));
  const std::string path = test::write(directory, "case_2.fld", test::plain_file(2, 0.0));
  FLD fld;
  fld.m_transient = true;
  EXPECT_EQ(fld.searchFLD(path.c_str()), 0);
  EXPECT_FALSE(fld.m_transient);
}

TEST(OpenFld, SeriesWithOneTimeAboveZeroIsTransient) {
  const testkit::TemporaryDirectory directory;
  test::write(directory, "case_1.fld", test::plain_file(1, 0.0));
  const std::string path = test::write(directory, "case_2.fld", test::plain_file(2, 1e-300));
  FLD fld;
  EXPECT_EQ(fld.searchFLD(path.c_str()), 0);
  EXPECT_TRUE(fld.m_transient);
}

TEST(OpenFld, TimesThatAreNotAboveZeroAreNotTransient) {
  std::vector<FLDFile> files(2, FLDFile("file"));
  files[0].m_time = -1.0;
  EXPECT_FALSE(FLD().isTransient_inner(files));
  EXPECT_FALSE(FLD().isTransient_inner({}));
  files[1].m_time = 0.001;
  EXPECT_TRUE(FLD().isTransient_inner(files));
}

}  // namespace
}  // namespace fld
