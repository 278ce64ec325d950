// The motion of an action's keyword.
#include <cstring>
#include <gtest/gtest.h>
#include <string>

#include "format/ale.h"

namespace {

using fld::Motion;

Motion kind_of(const std::string& text) {
  fld::ALE_ACT act;
  text.copy(act.kind, fld::ALE_ACT::kKindColumns);
  return act.motion();
}

TEST(MotionKind, IsToldByTheKeyword) {
  EXPECT_EQ(kind_of("Rotate"), Motion::rotate);
  EXPECT_EQ(kind_of("Translate"), Motion::translate);
  EXPECT_EQ(kind_of("Scale"), Motion::scale);
  EXPECT_EQ(kind_of("4Points"), Motion::four_points);
}

TEST(MotionKind, AnyNameThatBeginsWithTheKeywordCounts) {
  EXPECT_EQ(kind_of("Rotate          "), Motion::rotate);
  EXPECT_EQ(kind_of("RotateAroundAxis"), Motion::rotate);
  EXPECT_EQ(kind_of("Translated"), Motion::translate);
  EXPECT_EQ(kind_of("ScaleXYZ"), Motion::scale);
  EXPECT_EQ(kind_of("4PointsAffine" + std::string(67, '.')), Motion::four_points);
}

TEST(MotionKind, OtherNamesAreNoMotion) {
  for (const char* name : {"", " ", "Rotat", "rotate", " Rotate", "Trans", "translate", "Scal", "SCALE",
                           "4Point", "Points", "Shear"}) {
    EXPECT_EQ(kind_of(name), Motion::none) << name;
  }
}

TEST(MotionKind, AnActionStartsWithoutNameAndData) {
  const fld::ALE_ACT act;
  EXPECT_EQ(act.motion(), Motion::none);
  EXPECT_STREQ(act.kind, "");
  for (const double value : act.data) EXPECT_EQ(value, 0.0);
}

}  // namespace
