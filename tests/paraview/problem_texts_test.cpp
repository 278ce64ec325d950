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

}  // namespace
}  // namespace paraview_test
