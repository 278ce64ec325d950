// Names of series and their files.
#include "dataset/series.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <utility>

#include "testkit/byte_sink.h"
#include "testkit/temporary_directory.h"

namespace fld {
namespace {

using Parts = std::array<std::string, 4>;  // directory, base, cycle, extension

Parts parts_of(const std::string& path) {
  const SeriesName name(path);
  return {name.directory, name.base, name.cycle, name.extension};
}

TEST(SeriesName, SplitsDirectoryBaseCycleAndExtension) {
  EXPECT_EQ(parts_of("/d/case_100.fld"), (Parts{"/d", "case", "100", "fld"}));
  EXPECT_EQ(parts_of("/d/e/run_a_07.FLD"), (Parts{"/d/e", "run_a", "07", "FLD"}));
}

TEST(SeriesName, LastUnderscoreBeforeTheDigitsSplits) {
  EXPECT_EQ(parts_of("/d/case_1_2.fld"), (Parts{"/d", "case_1", "2", "fld"}));
  EXPECT_EQ(parts_of("/d/case__2.fld"), (Parts{"/d", "case_", "2", "fld"}));
}

TEST(SeriesName, UnderscoreAndDigitsAloneHaveAnEmptyBase) {
  EXPECT_EQ(parts_of("/d/_12.fld"), (Parts{"/d", "", "12", "fld"}));
}

TEST(SeriesName, NameWithoutUnderscoreAndDigitsAtItsEndHasNoCycle) {
  for (const char* name : {"case100", "case_", "100", "case_10a", "case_1.5", "case_1x2", "case-1", "mesh"}) {
    EXPECT_EQ(parts_of(std::string("/d/") + name + ".fld"), (Parts{"/d", "", "", "fld"})) << name;
  }
}

TEST(SeriesName, NameWithoutDirectoryHasAnEmptyDirectory) {
  EXPECT_EQ(parts_of("case_100.fld"), (Parts{"", "case", "100", "fld"}));
}

TEST(SeriesName, NameInTheRootDirectoryHasAnEmptyDirectory) {
  EXPECT_EQ(parts_of("/case_100.fld"), (Parts{"", "case", "100", "fld"}));
}

TEST(SeriesName, BackslashSeparatesToo) {
  EXPECT_EQ(parts_of("d\\case_1.fld"), (Parts{"d", "case", "1", "fld"}));
  EXPECT_EQ(parts_of("/d/e\\case_1.fld"), (Parts{"/d/e", "case", "1", "fld"}));
  EXPECT_EQ(parts_of("\\d\\e/case_1.fld"), (Parts{"\\d\\e", "case", "1", "fld"}));
}

TEST(SeriesName, ExtensionIsWhatFollowsTheLastDotOfTheFileName) {
  EXPECT_EQ(parts_of("/d/case_1.tar.fld"), (Parts{"/d", "", "", "fld"}));
  EXPECT_EQ(parts_of("/d.fld/case_1"), (Parts{"/d.fld", "case", "1", ""}));
  EXPECT_EQ(parts_of("/d/case_1."), (Parts{"/d", "case", "1", ""}));
  EXPECT_EQ(parts_of("/d/.fld"), (Parts{"/d", "", "", "fld"}));
}

TEST(SeriesName, EmptyPathHasNothing) {
  EXPECT_EQ(parts_of(""), (Parts{"", "", "", ""}));
  EXPECT_EQ(parts_of("/d/"), (Parts{"/d", "", "", ""}));
}

TEST(SeriesName, PartsOfAnyLengthAreKept) {
  const std::string directory(5000, 'd');
  const std::string base(5000, 'b');
  const std::string digits(5000, '7');
  const std::string extension = "fld" + std::string(5000, 'x');
  EXPECT_EQ(parts_of(directory + "/" + base + "_" + digits + "." + extension),
            (Parts{directory, base, digits, extension}));
}

TEST(SeriesName, ExtensionThatBeginsWithFldInAnyCaseIsRight) {
  for (const char* extension : {"fld", "FLD", "Fld", "fLD", "fldx", "FLD~"}) {
    EXPECT_TRUE(SeriesName(std::string("/d/case.") + extension).has_fld_extension()) << extension;
  }
}

TEST(SeriesName, OtherExtensionIsWrong) {
  for (const char* name : {"case.fl", "case.gz", "case.", "case", "case.xfld", "fld", "case.fld.gz"}) {
    EXPECT_FALSE(SeriesName(std::string("/d/") + name).has_fld_extension()) << name;
  }
}

// A directory with empty files.
class SeriesSearch : public testing::Test {
 protected:
  using Found = std::vector<std::pair<std::string, int>>;  // file name and cycle, sorted

  void make(std::initializer_list<const char*> names) const {
    for (const char* name : names) testkit::write_bytes(directory_ / name, "");
  }

  // The result of search_fld, without the directory.
  Found found(const std::string& base) const {
    const std::string folder = directory_.path().string();
    std::vector<std::string> files;
    std::vector<int> cycles;
    search_fld(folder.c_str(), base.c_str(), files, cycles);
    EXPECT_EQ(files.size(), cycles.size());
    Found result;
    for (size_t i = 0; i < files.size(); ++i) {
      EXPECT_EQ(files[i].substr(0, folder.size() + 1), folder + "/");
      result.emplace_back(files[i].substr(folder.size() + 1), cycles.at(i));
    }
    std::sort(result.begin(), result.end());
    return result;
  }

  testkit::TemporaryDirectory directory_;
};

TEST_F(SeriesSearch, FindsBaseUnderscoreDigits) {
  make({"case_1.fld", "case_0020.fld", "case.fld", "case1.fld", "case_a.fld", "case_1a.fld", "case-1.fld"});
  EXPECT_EQ(found("case"), (Found{{"case_0020.fld", 20}, {"case_1.fld", 1}}));
}

TEST_F(SeriesSearch, TellsASeriesFromOthersWhoseBaseBeginsOrEndsTheSame) {
  make({"case_1.fld", "case2_2.fld", "case_a_3.fld", "mycase_4.fld", "cas_5.fld"});
  EXPECT_EQ(found("case"), (Found{{"case_1.fld", 1}}));
  EXPECT_EQ(found("case_a"), (Found{{"case_a_3.fld", 3}}));
}

TEST_F(SeriesSearch, ComparesTheBaseWithoutRegardToCase) {
  make({"CASE_12.FLD", "case_3.fld", "Case_4.Fld"});
  const Found all = {{"CASE_12.FLD", 12}, {"Case_4.Fld", 4}, {"case_3.fld", 3}};
  EXPECT_EQ(found("case"), all);
  EXPECT_EQ(found("CASE"), all);
}

TEST_F(SeriesSearch, TakesTheLastFourCharactersForTheExtensionWhateverTheyAre) {
  make({"case_12.gz", "case_13.fld~", "case_0400.bak", "case_56789", "case_7.fldx"});
  EXPECT_EQ(found("case"), (Found{{"case_0400.bak", 400}, {"case_12.gz", 1}, {"case_56789", 5}}));
}

TEST_F(SeriesSearch, NeedsADigitAndFourMoreCharacters) {
  make({"case_.fld", "case_1.gz", "case_1234", "case_"});
  EXPECT_EQ(found("case"), Found{});
}

TEST_F(SeriesSearch, EmptyBaseIsASeriesToo) {
  make({"_12.fld", "_3.fld", "a_4.fld"});
  EXPECT_EQ(found(""), (Found{{"_12.fld", 12}, {"_3.fld", 3}}));
}

TEST_F(SeriesSearch, TakesTheBaseLiterally) {
  make({"case_1.fld", "c*e_2.fld", "c%s_3.fld", "c.se_4.fld"});
  EXPECT_EQ(found("c*e"), (Found{{"c*e_2.fld", 2}}));
  EXPECT_EQ(found("c%s"), (Found{{"c%s_3.fld", 3}}));
  EXPECT_EQ(found("c.se"), (Found{{"c.se_4.fld", 4}}));
}

TEST_F(SeriesSearch, LettersBeyondAsciiHaveNoCase) {
  make({"\xC3\xA9_1.fld", "\xC3\x89_2.fld"});
  EXPECT_EQ(found("\xC3\xA9"), (Found{{"\xC3\xA9_1.fld", 1}}));
}

TEST_F(SeriesSearch, CycleBeyond32BitsIsCutAndSkippedWhenNegative) {
  make({"case_2147483647.fld", "case_2147483648.fld", "case_4294967295.fld", "case_4294967296.fld",
        "case_4294967301.fld"});
  EXPECT_EQ(
      found("case"),
      (Found{{"case_2147483647.fld", 2147483647}, {"case_4294967296.fld", 0}, {"case_4294967301.fld", 5}}));
}

TEST_F(SeriesSearch, CycleBeyond64BitsIsSkipped) {
  make({"case_9223372036854775808.fld", "case_18446744073709551616.fld",
        "case_99999999999999999999999999.fld"});
  EXPECT_EQ(found("case"), Found{});
}

TEST_F(SeriesSearch, LeadingZerosDoNotCount) {
  const std::string name = "case_" + std::string(200, '0') + "7.fld";
  make({name.c_str()});
  EXPECT_EQ(found("case"), (Found{{name, 7}}));
}

TEST_F(SeriesSearch, EntriesNeedNotBeFiles) {
  make({"case_1.fld"});
  std::filesystem::create_directory(directory_ / "case_2.fld");
  ASSERT_EQ(mkfifo((directory_ / "case_3.fld").c_str(), 0600), 0);
  std::filesystem::create_symlink("nowhere", directory_ / "case_4.fld");
  EXPECT_EQ(found("case"),
            (Found{{"case_1.fld", 1}, {"case_2.fld", 2}, {"case_3.fld", 3}, {"case_4.fld", 4}}));
}

TEST_F(SeriesSearch, FolderThatCannotBeListedHasNoEntries) {
  make({"case_1.fld"});
  std::vector<std::string> files;
  std::vector<int> cycles;
  search_fld("", "case", files, cycles);
  search_fld((directory_ / "missing").c_str(), "case", files, cycles);
  search_fld((directory_ / "case_1.fld").c_str(), "case", files, cycles);
  EXPECT_TRUE(files.empty());
  EXPECT_TRUE(cycles.empty());
}

TEST_F(SeriesSearch, AppendsToWhatIsThere) {
  make({"case_1.fld"});
  std::vector<std::string> files = {"first"};
  std::vector<int> cycles = {99};
  search_fld(directory_.path().c_str(), "case", files, cycles);
  EXPECT_EQ(files, (std::vector<std::string>{"first", (directory_ / "case_1.fld").string()}));
  EXPECT_EQ(cycles, (std::vector<int>{99, 1}));
}

TEST_F(SeriesSearch, SeriesIsInAscendingOrderOfItsCycleNumbers) {
  make({"case_100.fld", "case_2.fld", "case_0010.fld", "case_0.fld"});
  const std::string folder = directory_.path().string();
  EXPECT_EQ(find_series(folder, "case"),
            (std::vector<std::string>{folder + "/case_0.fld", folder + "/case_2.fld",
                                      folder + "/case_0010.fld", folder + "/case_100.fld"}));
}

TEST_F(SeriesSearch, FilesOfEqualCycleAllStay) {
  make({"case_1.fld", "case_01.fld", "case_0.fld"});
  const std::string folder = directory_.path().string();
  auto files = find_series(folder, "case");
  ASSERT_EQ(files.size(), 3U);
  EXPECT_EQ(files[0], folder + "/case_0.fld");
  std::sort(files.begin(), files.end());
  EXPECT_EQ(files[1], folder + "/case_01.fld");
  EXPECT_EQ(files[2], folder + "/case_1.fld");
}

TEST(Fcyc, ComparesCycleNumbers) {
  EXPECT_TRUE(FCYC::compare_cyc({"b", 1}, {"a", 2}));
  EXPECT_FALSE(FCYC::compare_cyc({"a", 2}, {"b", 1}));
  EXPECT_FALSE(FCYC::compare_cyc({"a", 1}, {"b", 1}));
}

}  // namespace
}  // namespace fld
