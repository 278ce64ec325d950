// The volume region that a motion's name refers to.
#include "dataset/volume_names.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

namespace fld::test {
namespace {

std::vector<std::string_view> views(const std::vector<std::string>& names) {
  return {names.begin(), names.end()};
}

int find(const std::vector<std::string>& names, const std::string& wanted) {
  return VolumeNames(views(names)).find(wanted);
}

TEST(NamedVolumes, NameItselfAndLongerOnesAreFound) {
  const std::vector<std::string> names = {"rotor", "inlet", "stator"};
  EXPECT_EQ(0, find(names, "rotor"));
  EXPECT_EQ(1, find(names, "inlet_2"));
  EXPECT_EQ(2, find(names, "stators"));
}

TEST(NamedVolumes, ShorterAndOtherNamesAreNot) {
  const std::vector<std::string> names = {"rotor", "inlet"};
  for (const char* wanted : {"", "roto", "rotot", "Rotor", "a", "zzz", "inles", "inlf"}) {
    EXPECT_EQ(-1, find(names, wanted)) << wanted;
  }
  EXPECT_EQ(-1, find({}, "rotor"));
  EXPECT_EQ(-1, find({}, ""));
}

TEST(NamedVolumes, FirstOfSeveralIsTaken) {
  EXPECT_EQ(0, find({"ab", "abc", "a"}, "abcd"));
  EXPECT_EQ(0, find({"abc", "ab", "a"}, "abcd"));
  EXPECT_EQ(1, find({"abc", "ab", "a"}, "abd")) << "past an entry that is no prefix";
  EXPECT_EQ(1, find({"b", "a", "a"}, "a"));
}

TEST(NamedVolumes, EmptyNameIsAPrefixOfEveryName) {
  EXPECT_EQ(1, find({"b", "", "a"}, "a"));
  EXPECT_EQ(1, find({"b", "", "a"}, ""));
  EXPECT_EQ(0, find({"b", "", "a"}, "b"));
}

TEST(NamedVolumes, BytesAreUnsigned) {
  EXPECT_EQ(1, find({"a", "\x83\x8d"}, "\x83\x8d\x81"));
  EXPECT_EQ(0, find({"a", "\x83\x8d"}, "ab"));
}

TEST(NamedVolumes, AreThoseThatASearchFromTheFirstOnFinds) {
  std::mt19937 random(1);
  const auto any_name = [&random] {
    std::string name(random() % 7, 'a');
    for (char& letter : name) letter = static_cast<char>('a' + random() % 2);
    return name;
  };
  int found_some = 0;
  for (int round = 0; round < 50; ++round) {
    std::vector<std::string> names(1 + random() % 12);
    for (std::string& name : names) name = any_name() + "b";
    const VolumeNames index(views(names));
    for (int i = 0; i < 40; ++i) {
      const std::string wanted = any_name();
      int expected = -1;
      for (std::size_t v = names.size(); v-- > 0;) {
        if (wanted.starts_with(names[v])) expected = static_cast<int>(v);
      }
      EXPECT_EQ(expected, index.find(wanted)) << wanted << " in round " << round;
      found_some += expected >= 0 ? 1 : 0;
    }
  }
  EXPECT_LT(500, found_some);
}

TEST(SharedOutVolumes, GoToTheLastRegionThatNamesThem) {
  const std::vector<std::string> names = {"rotor", "stator", "shaft"};
  ALE ale;
  ale.regions = {{3, {"rotor", "stator", "other"}, {}},
                 {4, {"shaft", "rotor", "rotor", "rotor_2"}, {}},
                 {1, {"other"}, {}}};
  EXPECT_EQ((std::vector<std::vector<int>>{{1}, {2, 0}, {}}), share_out_volumes(ale, views(names)));
}

}  // namespace
}  // namespace fld::test
