// What users are told of what could not be read.
#include "paraview/problem_texts.h"

#include <gtest/gtest.h>

namespace paraview_test {
namespace {

using Texts = std::vector<std::string>;

class ProblemTexts : public testing::Test {
 protected:
  ProblemTexts() { info_.variables = {{1, "Pressure", "Pa", 1, false}, {2, "Velocity", "m/s", 3, false}}; }

  Texts texts(const std::vector<parallel::Problem>& problems) const {
    return paraview::problem_texts(problems, parts_, info_);
  }

  std::vector<paraview::PartInfo> parts_ = {
      {1, "hub", false}, {4, "shaft", false}, {5, "ALL_ELEMENTS", true}};
  paraview::DatasetInfo info_;
};

TEST_F(ProblemTexts, NameTheFirstPartAndVariableAndCountTheOthers) {
  EXPECT_EQ(texts({{"a.fld: reason", 1, {4}}}),
            Texts{"cannot read 'Pressure' on part 'shaft': a.fld: reason"});
  EXPECT_EQ(texts({{"a.fld: reason", 0, {5, 4}}}),
            Texts{"cannot read part 'shaft' and 1 more: a.fld: reason"});
  EXPECT_EQ(texts({{"a.fld: reason", 1, {4, 5}}, {"a.fld: reason", 2, {1, 4, 5}}}),
            Texts{"cannot read 'Pressure' and 1 more on part 'hub' and 2 more: a.fld: reason"});
}

TEST_F(ProblemTexts, AreOneForEachCause) {
  EXPECT_TRUE(texts({}).empty());
  EXPECT_EQ(
      texts({{"b.fld: other", 2, {1}}, {"a.fld: reason", 2, {1}}, {"a.fld: reason", 0, {4}}}),
      (Texts{"cannot read part 'shaft': a.fld: reason", "cannot read 'Velocity' on part 'hub': a.fld: reason",
             "cannot read 'Velocity' on part 'hub': b.fld: other"}));
}

TEST(OtherFilesText, IsOneForAllFiles) {
  EXPECT_EQ(paraview::other_files_text({"b.fld"}, "a_0.fld"),
            "b.fld does not belong to the dataset of a_0.fld and is left out");
  EXPECT_EQ(paraview::other_files_text({"b.fld", "c.fld", "d.fld"}, "a_0.fld"),
            "b.fld and 2 more do not belong to the dataset of a_0.fld and are left out");
}

TEST(ReasonWithFile, NamesTheFileOnce) {
  EXPECT_EQ(paraview::reason_with_file("a.fld", "no memory"), "a.fld: no memory");
  EXPECT_EQ(paraview::reason_with_file("a.fld", "a.fld: no memory"), "a.fld: no memory");
  EXPECT_EQ(paraview::reason_with_file("a.fld", "b.fld: no memory"), "a.fld: b.fld: no memory");
}

TEST(MessageLine, HasNeitherLineBreaksNorBytesThatAreNoText) {
  EXPECT_EQ(paraview::message_line("two\nlines\t\x1b[1m"), "two lines  [1m");
  EXPECT_EQ(paraview::message_line("\xE6\x97\xA5.fld"), "\xE6\x97\xA5.fld");
  EXPECT_EQ(paraview::message_line("\x93\xFA.fld"), "\xE6\x97\xA5.fld");  // Shift_JIS
}

}  // namespace
}  // namespace paraview_test
