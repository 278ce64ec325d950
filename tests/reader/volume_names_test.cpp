// The volume region that a motion's name refers to.
#include "reader/volume_names.h"

#include <cstring>
#include <random>
#include <string>

#include "support/tracked_allocation.h"
#include "tests/reader/linked_reader.h"

namespace reader_test {
namespace {

using Volumes = std::vector<fld::smart_ptr<fld::VolumeGeometry>>;

class VolumeNames : public LinkedReader {
 protected:
  static Volumes volumes_named(const std::vector<std::string>& names) {
    Volumes volumes;
    for (const std::string& name : names) {
      volumes.push_back(fld::make_smart<fld::VolumeGeometry>());
      volumes.back()->name = static_cast<char*>(fld::cv_maloc(name.size() + 1, 1));
      strcpy(volumes.back()->name, name.c_str());
    }
    return volumes;
  }
  static int find(const std::vector<std::string>& names, const std::string& wanted) {
    const Volumes volumes = volumes_named(names);
    return fld::VolumeNames(volumes).find(wanted);
  }
};

TEST_F(VolumeNames, NameItselfAndLongerOnesAreFound) {
  const std::vector<std::string> names = {"rotor", "inlet", "stator"};
  EXPECT_EQ(0, find(names, "rotor"));
  EXPECT_EQ(1, find(names, "inlet_2"));
  EXPECT_EQ(2, find(names, "stators"));
}

TEST_F(VolumeNames, ShorterAndOtherNamesAreNot) {
  const std::vector<std::string> names = {"rotor", "inlet"};
  for (const char* wanted : {"", "roto", "rotot", "Rotor", "a", "zzz", "inles", "inlf"}) {
    EXPECT_EQ(-1, find(names, wanted)) << wanted;
  }
  EXPECT_EQ(-1, find({}, "rotor"));
  EXPECT_EQ(-1, find({}, ""));
}

TEST_F(VolumeNames, FirstOfSeveralIsTaken) {
  EXPECT_EQ(0, find({"ab", "abc", "a"}, "abcd"));
  EXPECT_EQ(0, find({"abc", "ab", "a"}, "abcd"));
  EXPECT_EQ(1, find({"abc", "ab", "a"}, "abd")) << "past an entry that is no prefix";
  EXPECT_EQ(1, find({"b", "a", "a"}, "a"));
}

TEST_F(VolumeNames, EmptyNameIsAPrefixOfEveryName) {
  EXPECT_EQ(1, find({"b", "", "a"}, "a"));
  EXPECT_EQ(1, find({"b", "", "a"}, ""));
  EXPECT_EQ(0, find({"b", "", "a"}, "b"));
}

TEST_F(VolumeNames, BytesAreUnsigned) {
  EXPECT_EQ(1, find({"a", "\x83\x8d"}, "\x83\x8d\x81"));
  EXPECT_EQ(0, find({"a", "\x83\x8d"}, "ab"));
}

TEST_F(VolumeNames, AreThoseThatASearchFromTheFirstOnFinds) {
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
    const Volumes volumes = volumes_named(names);
    const fld::VolumeNames index(volumes);
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

}  // namespace
}  // namespace reader_test
