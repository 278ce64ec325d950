// Volume regions, region by region and as arrays.
#include "format/volume_geometry.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "testkit/mesh.h"
#include "tests/format/input.h"
#include "tests/support/empty_list.h"
#include "tests/support/thrown_message.h"

namespace {

using testkit::RegionForm;
using testkit::Section;

using Volumes = std::vector<fld::smart_ptr<fld::VolumeGeometry>>;
using Ints = std::vector<int>;

// For both forms, which must give the same regions.
class VolumeGeometry : public EmptyList, public testing::WithParamInterface<RegionForm> {
 protected:
  static void read_from(FILE* stream, Volumes& list) {
    if (GetParam() == RegionForm::kArray) {
      fld::FLDV4_VolumeGeometryArray(stream, list);
    } else {
      fld::FLDV4_VolumeGeometry(stream, list);
    }
  }
  static Volumes read(const Section& section) {
    const Input input(body_of(section) + kNext);
    Volumes list;
    read_from(input.stream(), list);
    EXPECT_EQ(input.rest(), kNext);
    return list;
  }
  static Section section_of(const std::vector<testkit::Volume>& volumes) {
    return testkit::volumes_section(volumes, GetParam());
  }
};

INSTANTIATE_TEST_SUITE_P(As, VolumeGeometry, testing::Values(RegionForm::kPerRegion, RegionForm::kArray),
                         [](const auto& info) {
                           return info.param == RegionForm::kArray ? "Array" : "PerRegion";
                         });

Ints elements_of(const fld::VolumeGeometry& volume) {
  return {volume.elem, volume.elem + volume.nelem};
}

TEST_P(VolumeGeometry, EveryRegionGetsItsOwnElements) {
  const Volumes list = read(section_of({{"fluid", {4, 5, 6}}, {"solid", {0}}, {"rest", {1, 2}}}));
  ASSERT_EQ(list.size(), 3U);
  EXPECT_STREQ(list[0]->name, "fluid");
  EXPECT_EQ(list[0]->nelem, 3);
  EXPECT_EQ(elements_of(*list[0]), (Ints{4, 5, 6}));
  EXPECT_STREQ(list[1]->name, "solid");
  EXPECT_EQ(elements_of(*list[1]), (Ints{0}));
  EXPECT_STREQ(list[2]->name, "rest");
  EXPECT_EQ(elements_of(*list[2]), (Ints{1, 2}));
}

TEST_P(VolumeGeometry, NumbersAreCopiedUnchanged) {
  EXPECT_EQ(elements_of(*read(section_of({{"fluid", {-1, 0x7fffffff}}}))[0]), (Ints{-1, 0x7fffffff}));
}

TEST_P(VolumeGeometry, ElementsAreNotCountedByTypeYet) {
  const Volumes list = read(section_of({{"fluid", {0, 1}}}));
  EXPECT_EQ(list[0]->ntri + list[0]->nquad + list[0]->ntet, 0);
  EXPECT_EQ(list[0]->npyr + list[0]->nprism + list[0]->nhex, 0);
}

TEST_P(VolumeGeometry, ARegionWithoutElementsHasNoArray) {
  const Volumes list = read(section_of({{"fluid", {1}}, {"empty", {}}, {"rest", {2}}}));
  ASSERT_EQ(list.size(), 3U);
  EXPECT_STREQ(list[1]->name, "empty");
  EXPECT_EQ(list[1]->nelem, 0);
  EXPECT_EQ(list[1]->elem, nullptr);
  EXPECT_EQ(elements_of(*list[2]), Ints{2});
}

TEST_P(VolumeGeometry, ArraysMayBeSpreadOverRecords) {
  Section section = section_of({{"fluid", {4, 5, 6, 7, 8}}});
  section.blocks[4] = section.blocks[4].cut(2);
  EXPECT_EQ(elements_of(*read(section)[0]), (Ints{4, 5, 6, 7, 8}));
}

TEST_P(VolumeGeometry, AMissingBlockFails) {
  const size_t blocks = section_of({{"fluid", {4, 5}}}).blocks.size();
  for (size_t block = 0; block < blocks; ++block) {
    Section section = section_of({{"fluid", {4, 5}}});
    section.blocks.erase(section.blocks.begin() + static_cast<long>(block));
    const Input input(body_of(section));
    Volumes list;
    EXPECT_NE(thrown_message([&] { read_from(input.stream(), list); }), "nothing was thrown") << block;
  }
}

}  // namespace
