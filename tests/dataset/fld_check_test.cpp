// FLD::checkFLD: which files are accepted, and the messages for the others.
#include <filesystem>
#include <sys/stat.h>

#include "dataset/fld.h"
#include "testkit/byte_sink.h"
#include "tests/dataset/dataset_test.h"

namespace fld {
namespace {

class CheckFld : public testing::Test {
 protected:
  // The result for this file alone, and the messages.
  test::Reading check(const std::string& path) {
    test::Messages messages;
    const int status = FLD().checkFLD({path}, files_);
    EXPECT_FALSE(test::is_open(path));
    return {status, messages.text()};
  }
  test::Reading check(const testkit::File& file) { return check(test::write(directory_, "a.fld", file)); }

  // Opening this file as a dataset gives the same messages and -2.
  void expect_opening_fails(const testkit::File& file, const std::string& message) {
    const std::string path = test::write(directory_, "a.fld", file);
    test::Messages messages;
    EXPECT_EQ(FLD().searchFLD(path.c_str()), -2);
    EXPECT_EQ(messages.text(), message);
  }

  testkit::TemporaryDirectory directory_;
  std::vector<FLDFile> files_;
};

TEST_F(CheckFld, NoFilesAreRight) {
  EXPECT_EQ(FLD().checkFLD({}, files_), 0);
  EXPECT_TRUE(files_.empty());
}

TEST_F(CheckFld, AppendsEveryFileInOrder) {
  const std::string b = test::write(directory_, "b.fld", test::plain_file(1));
  const std::string a = test::write(directory_, "a.fld", test::plain_file(2));
  files_.emplace_back("first");
  EXPECT_EQ(FLD().checkFLD({b, a}, files_), 0);
  ASSERT_EQ(files_.size(), 3U);
  EXPECT_EQ(files_[1].m_path, b);
  EXPECT_EQ(files_[1].m_cycle, 1);
  EXPECT_EQ(files_[2].m_path, a);
  EXPECT_EQ(files_[2].m_cycle, 2);
}

TEST_F(CheckFld, MissingFileCannotBeOpened) {
  const std::string path = (directory_ / "missing.fld").string();
  const auto [status, messages] = check(path);
  EXPECT_EQ(status, -1);
  EXPECT_EQ(messages, "FAILED TO OPEN " + path + "\n");
  test::Messages of_opening;
  EXPECT_EQ(FLD().searchFLD(path.c_str()), -2);
  EXPECT_EQ(of_opening.text(), "FAILED TO OPEN " + path + "\n");
}

TEST_F(CheckFld, FolderCannotBeOpened) {
  const auto [status, messages] = check(directory_.path().string());
  EXPECT_EQ(status, -1);
  EXPECT_EQ(messages, "FAILED TO OPEN " + directory_.path().string() + "\n");
}

TEST_F(CheckFld, NamedPipeCannotBeOpenedAndDoesNotBlock) {
  const std::string path = (directory_ / "pipe.fld").string();
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  const auto [status, messages] = check(path);
  EXPECT_EQ(status, -1);
  EXPECT_EQ(messages, "FAILED TO OPEN " + path + "\n");
}

TEST_F(CheckFld, DeviceCannotBeOpened) {
  const std::string path = (directory_ / "device.fld").string();
  std::filesystem::create_symlink("/dev/zero", path);
  const auto [status, messages] = check(path);
  EXPECT_EQ(status, -1);
  EXPECT_EQ(messages, "FAILED TO OPEN " + path + "\n");
}

TEST_F(CheckFld, LinkToAFileIsFollowed) {
  test::write(directory_, "target", test::plain_file());
  const std::string path = (directory_ / "link.fld").string();
  std::filesystem::create_symlink("target", path);
  EXPECT_EQ(check(path).status, 0);
}

TEST_F(CheckFld, FileWithAnotherMagicIsNotAnFldFile) {
  testkit::File file = test::plain_file();
  file.magic = "VTRL-FLE";
  const auto [status, messages] = check(file);
  EXPECT_EQ(status, -2);
  EXPECT_EQ(messages, "This is not FLD file.\n");
  expect_opening_fails(file, "This is not FLD file.\n");
}

TEST_F(CheckFld, FileTooShortForTheIdentificationIsNotAnFldFile) {
  const std::string whole = testkit::to_bytes(test::plain_file());
  const std::string path = (directory_ / "short.fld").string();
  for (size_t length = 0; length < 16; ++length) {
    testkit::write_bytes(path, whole.substr(0, length));
    const auto [status, messages] = check(path);
    EXPECT_EQ(status, -2) << length;
    EXPECT_EQ(messages, "This is not FLD file.\n") << length;
  }
}

TEST_F(CheckFld, VersionHasToBe4) {
  for (const int version : {3, 5, 0, -4, 0x04000000}) {
    testkit::File file = test::plain_file();
    file.version = version;
    const auto [status, messages] = check(file);
    EXPECT_EQ(status, -3) << version;
    EXPECT_EQ(messages, "FLD FILE VERSION HAS TO BE 4.\n") << version;
    expect_opening_fails(file, "FLD FILE VERSION HAS TO BE 4.\n");
  }
}

TEST_F(CheckFld, DimensionMustNotBe2) {
  testkit::File file = test::plain_file();
  file.header.set_dimension(2);
  const auto [status, messages] = check(file);
  EXPECT_EQ(status, -3);
  EXPECT_EQ(messages, "L2D3D MUST BE 3 IN FLD\n");
  expect_opening_fails(file, "L2D3D MUST BE 3 IN FLD\n");
}

TEST_F(CheckFld, AnyOtherDimensionPasses) {
  for (const int dimension : {1, 3, 0, 4, -2}) {
    testkit::File file = test::plain_file();
    file.header.set_dimension(dimension);
    EXPECT_EQ(check(file).status, 0) << dimension;
    EXPECT_EQ(files_.back().m_dimension, dimension);
  }
}

TEST_F(CheckFld, FirstFileNeedsNodes) {
  testkit::File file = test::plain_file();
  file.region_sets[0].remove("LS_Nodes");
  const auto [status, messages] = check(file);
  EXPECT_EQ(status, -5);
  EXPECT_EQ(messages, "NOT FOUND GEOMETRY DATA IN THE FIRST FLD FILE\n");
  EXPECT_TRUE(files_.empty());
  expect_opening_fails(file, "NOT FOUND GEOMETRY DATA IN THE FIRST FLD FILE\n");
}

TEST_F(CheckFld, FirstFileNeedsNodesInEveryRegionSet) {
  testkit::File file = test::plain_file();
  file.add_region_set();
  const auto [status, messages] = check(file);
  EXPECT_EQ(status, -5);
  EXPECT_EQ(messages, "NOT FOUND GEOMETRY DATA IN THE FIRST FLD FILE\n");
}

TEST_F(CheckFld, LaterFilesNeedNoNodes) {
  testkit::File without_nodes = test::plain_file(2);
  without_nodes.region_sets[0].remove("LS_Nodes");
  const std::string first = test::write(directory_, "case_1.fld", test::plain_file(1));
  test::write(directory_, "case_2.fld", without_nodes);
  FLD fld;
  test::Messages messages;
  EXPECT_EQ(fld.searchFLD(first.c_str()), 0);
  EXPECT_EQ(messages.text(), "");
  ASSERT_EQ(fld.m_fld.size(), 2U);
  EXPECT_TRUE(fld.m_fld[0].hasGeometry());
  EXPECT_FALSE(fld.m_fld[1].hasGeometry());
}

TEST_F(CheckFld, FileWithoutRegionSetsPasses) {
  testkit::File file;
  EXPECT_EQ(check(file).status, 0);
  ASSERT_EQ(files_.size(), 1U);
  EXPECT_TRUE(files_[0].m_overlap.empty());
}

TEST_F(CheckFld, StopsAtTheFirstBadFile) {
  const std::string good = test::write(directory_, "good.fld", test::plain_file());
  testkit::File of_version_3 = test::plain_file();
  of_version_3.version = 3;
  const std::string bad = test::write(directory_, "bad.fld", of_version_3);
  test::Messages messages;
  EXPECT_EQ(FLD().checkFLD({good, bad, "/not looked at.fld"}, files_), -3);
  EXPECT_EQ(messages.text(), "FLD FILE VERSION HAS TO BE 4.\n");
  ASSERT_EQ(files_.size(), 1U);
  EXPECT_EQ(files_[0].m_path, good);
}

TEST_F(CheckFld, FileThatBreaksOffAnywhereIsAReadError) {
  testkit::File file = test::plain_file();
  file.region_sets[0].add(testkit::motion_section(
      {.base_cycle = 1,
       .regions = {{.names = {"fluid"}, .actions = {testkit::Action::translate({1.0, 2.0, 3.0})}}}}));
  const std::string path = test::write(directory_, "cut.fld", file);
  for (auto length = std::filesystem::file_size(path) - 1; length >= 16; --length) {
    std::filesystem::resize_file(path, length);
    const std::string error = test::read_error([&] { return FLD().checkFLD({path}, files_); });
    ASSERT_EQ(error.substr(0, 31), "UNEXPECTED END OF FILE AT BYTE ") << length;
    ASSERT_FALSE(test::is_open(path)) << length;
  }
  EXPECT_TRUE(files_.empty());
}

TEST_F(CheckFld, FileThatEndsBehindItsIdentificationSaysWhere) {
  const std::string path = (directory_ / "cut.fld").string();
  testkit::write_bytes(path, testkit::to_bytes(test::plain_file()).substr(0, 16));
  EXPECT_EQ(test::read_error([&] { return FLD().checkFLD({path}, files_); }),
            "UNEXPECTED END OF FILE AT BYTE 16.");
}

TEST_F(CheckFld, StepBackwardsIsAReadError) {
  testkit::File file = test::plain_file();
  testkit::Block& conn = file.region_sets[0].section("LS_Elements").blocks[3];
  conn.markers.leading = -24;
  testkit::Places places;
  const std::string path = test::write(directory_, "a.fld", file, &places);
  EXPECT_EQ(test::read_error([&] { return FLD().checkFLD({path}, files_); }),
            "NEGATIVE RECORD LENGTH -24 AT BYTE " +
                std::to_string(places.of("LS_Elements").blocks[3] + 20 + 4) + ".");
}

using CheckFldDeathTest = CheckFld;

TEST_F(CheckFldDeathTest, MotionWithTheWrongNumberOfItemsIsAnAssertion) {
  testkit::File file = test::plain_file();
  testkit::Action action = testkit::Action::translate({1.0, 2.0, 3.0});
  action.item_count = 2;
  file.region_sets[0].add(
      testkit::motion_section({.base_cycle = 1, .regions = {{.names = {"fluid"}, .actions = {action}}}}));
  const std::string path = test::write(directory_, "a.fld", file);
  EXPECT_ASSERTION(FLD().searchFLD(path.c_str()), "Convert_read_fld", "void FLDV4_ALE(_IO_FILE *, ALE &)",
                   "ndat == 1");
}

}  // namespace
}  // namespace fld
