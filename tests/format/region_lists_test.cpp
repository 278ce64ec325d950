// The common behaviour of the four region readers: the list, the names, the counts.
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "format/surface_geometry.h"
#include "format/volume_geometry.h"
#include "testkit/mesh.h"
#include "tests/format/input.h"
#include "tests/support/empty_list.h"
#include "tests/support/thrown_message.h"

namespace {

using testkit::Block;
using testkit::RegionForm;
using testkit::Section;

// Sections of regions that have two faces or elements each. In all of them block 0 is the count of regions, 1
// the length of a name, 2 holds the first name, 3 the first region's count of entries and 4 these entries.
template <RegionForm form>
Section surfaces(const std::vector<std::string>& names, size_t name_length) {
  std::vector<testkit::Surface> list;
  for (const std::string& name : names) {
    testkit::Surface& surface = list.emplace_back();
    surface.name = name;
    surface.add(testkit::kLineFace, {0, 1});
    surface.add(testkit::kLineFace, {1, 2});
  }
  return testkit::surfaces_section(list, form, name_length);
}

template <RegionForm form>
Section volumes(const std::vector<std::string>& names, size_t name_length) {
  std::vector<testkit::Volume> list;
  list.reserve(names.size());
  for (const std::string& name : names) list.push_back({name, {0, 1}});
  return testkit::volumes_section(list, form, name_length);
}

struct SurfacesPerRegion {
  using Region = fld::SurfaceGeometry;
  static constexpr auto read = fld::FLDV4_SurfaceGeometry;
  static constexpr auto section = surfaces<RegionForm::kPerRegion>;
};
struct SurfacesAsArray {
  using Region = fld::SurfaceGeometry;
  static constexpr auto read = fld::FLDV4_SurfaceGeometryArray;
  static constexpr auto section = surfaces<RegionForm::kArray>;
};
struct VolumesPerRegion {
  using Region = fld::VolumeGeometry;
  static constexpr auto read = fld::FLDV4_VolumeGeometry;
  static constexpr auto section = volumes<RegionForm::kPerRegion>;
};
struct VolumesAsArray {
  using Region = fld::VolumeGeometry;
  static constexpr auto read = fld::FLDV4_VolumeGeometryArray;
  static constexpr auto section = volumes<RegionForm::kArray>;
};

template <class Form>
class RegionLists : public EmptyList {
 protected:
  using List = std::vector<fld::smart_ptr<typename Form::Region>>;

  static Section section(const std::vector<std::string>& names, size_t name_length = 0) {
    return Form::section(names, name_length);
  }
  static void read(const Section& section, List& list) { read_bytes(body_of(section), list); }
  static void read_bytes(const std::string& bytes, List& list) {
    const Input input(bytes + kNext);
    Form::read(input.stream(), list);
    EXPECT_EQ(input.rest(), kNext);
  }
  static std::string error_of(const Section& section, List& list) {
    const Input input(body_of(section));
    return thrown_message([&] { Form::read(input.stream(), list); });
  }
  static std::string error_of(const Section& section) {
    List list;
    return error_of(section, list);
  }
  static List list_of(const std::vector<std::string>& names) {
    List list;
    read(section(names), list);
    return list;
  }
  static std::vector<std::string> names_of(const List& list) {
    std::vector<std::string> names;
    for (const auto& region : list) names.emplace_back(region->name);
    return names;
  }
};

using Names = std::vector<std::string>;
struct FormNames {
  template <class Form>
  static std::string GetName(int index) {
    static constexpr const char* kNames[] = {"SurfacesPerRegion", "SurfacesAsArray", "VolumesPerRegion",
                                             "VolumesAsArray"};
    return kNames[index];
  }
};
using Forms = testing::Types<SurfacesPerRegion, SurfacesAsArray, VolumesPerRegion, VolumesAsArray>;
TYPED_TEST_SUITE(RegionLists, Forms, FormNames);

TYPED_TEST(RegionLists, KeepTheOrderOfTheFile) {
  EXPECT_EQ(this->names_of(this->list_of({"b", "a", "c"})), (Names{"b", "a", "c"}));
}

TYPED_TEST(RegionLists, NamesLoseTheirTrailingBlanks) {
  typename TestFixture::List list;
  this->read(this->section({"wall", "two words", " x"}, 16), list);
  EXPECT_EQ(this->names_of(list), (Names{"wall", "two words", " x"}));
}

TYPED_TEST(RegionLists, NamesMayFillTheirField) {
  typename TestFixture::List list;
  this->read(this->section({"abcd", "ef", "ghij"}, 4), list);
  EXPECT_EQ(this->names_of(list), (Names{"abcd", "ef", "ghij"}));
}

TYPED_TEST(RegionLists, NamesMayBeEmpty) {
  typename TestFixture::List list;
  this->read(this->section({"", "a", ""}, 4), list);
  EXPECT_EQ(this->names_of(list), (Names{"", "a", ""}));
}

TYPED_TEST(RegionLists, NamesMayBeLong) {
  const Names names = {std::string(5000, 'x'), "short", std::string(4999, 'y')};
  EXPECT_EQ(this->names_of(this->list_of(names)), names);
}

TYPED_TEST(RegionLists, NamesMayHaveNoCharactersAtAll) {
  Section section = this->section({"a", "b"});
  const bool is_array = section.title.text.ends_with("Array");
  section.blocks[1] = Block::integer(0);
  const std::string empty = bytes_of(testkit::Rule{1, 0, 1}) + std::string(8, '\0');
  section.blocks[2] = Block::raw(empty);
  if (!is_array) section.blocks[2 + (section.blocks.size() - 2) / 2] = Block::raw(empty);
  for (Block& block : section.blocks) {
    if (!block.is_framed) block.has_rule = false;
  }
  typename TestFixture::List list;
  this->read(section, list);
  EXPECT_EQ(this->names_of(list), (Names{"", ""}));
}

TYPED_TEST(RegionLists, AreReplacedByTheSection) {
  typename TestFixture::List list = this->list_of({"a", "b"});
  const auto* old_region = list[0].get();
  const auto still_held = list[0];
  this->read(this->section({"c", "d"}), list);
  EXPECT_EQ(this->names_of(list), (Names{"c", "d"}));
  EXPECT_NE(list[0].get(), old_region);
  EXPECT_STREQ(still_held->name, "a") << "another holder keeps its region";
}

TYPED_TEST(RegionLists, OfFiveRegionsShrinkToThreeNewOnes) {
  typename TestFixture::List list = this->list_of({"a", "b", "c", "d", "e"});
  const typename TestFixture::List held = list;
  this->read(this->section({"x", "y", "z"}), list);
  EXPECT_EQ(this->names_of(list), (Names{"x", "y", "z"}));
  for (size_t r = 0; r < 3; ++r) EXPECT_NE(list[r].get(), held[r].get());
}

TYPED_TEST(RegionLists, ReleaseTheRegionsThatAreDropped) {
  {
    typename TestFixture::List list = this->list_of({"a", "b", "c", "d", "e"});
    this->read(this->section({}), list);
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(fld::memory, nullptr) << "arrays of the dropped regions were kept";
  }
  EXPECT_EQ(fld::memory, nullptr);
}

TYPED_TEST(RegionLists, GrowToTheSectionsRegions) {
  typename TestFixture::List list = this->list_of({"a"});
  this->read(this->section({"x", "y", "z"}), list);
  EXPECT_EQ(this->names_of(list), (Names{"x", "y", "z"}));
}

TYPED_TEST(RegionLists, WithoutRegionsMayEndAfterTheNameLength) {
  typename TestFixture::List list = this->list_of({"a"});
  this->read_bytes(bytes_of(Block::integer(0)) + bytes_of(Block::integer(16)) + bytes_of(testkit::Rule{}),
                   list);
  EXPECT_TRUE(list.empty());
}

TYPED_TEST(RegionLists, WithoutRegionsTheArrayFormMayCarryItsEmptyBlocks) {
  typename TestFixture::List list = this->list_of({"a"});
  this->read(this->section({}), list);
  EXPECT_TRUE(list.empty());
  if (!this->section({}).title.text.ends_with("Array")) return;

  // An empty character block with a record of its own, and integers with an empty record.
  const size_t blocks = this->section({}).blocks.size();
  std::string bytes = bytes_of(Block::integer(0)) + bytes_of(Block::integer(4));
  bytes += bytes_of(testkit::Rule{1, 0, 1}) + std::string(8, '\0');
  for (size_t block = 3; block < blocks; ++block) {
    bytes += bytes_of(testkit::Rule{4, 0, 1}) + std::string(8, '\0');
  }
  this->read_bytes(bytes + bytes_of(testkit::Rule{}), list);
  EXPECT_TRUE(list.empty());
}

TYPED_TEST(RegionLists, ANegativeCountIsAnErrorAndLeavesTheListAlone) {
  typename TestFixture::List list = this->list_of({"a", "b"});
  Section section = this->section({"x"});
  section.blocks[0] = Block::integer(-1);
  EXPECT_EQ(this->error_of(section, list).substr(0, 17), "NEGATIVE COUNT -1");
  EXPECT_EQ(this->names_of(list), (Names{"a", "b"}));
}

TYPED_TEST(RegionLists, ACountBeyondTheFileIsAnErrorAndLeavesTheListAlone) {
  typename TestFixture::List list = this->list_of({"a", "b"});
  for (const int count : {0x7fffffff, 1 << 20}) {
    Section section = this->section({"x"});
    section.blocks[0] = Block::integer(count);
    EXPECT_EQ(this->error_of(section, list).substr(0, 6 + std::to_string(count).size()),
              "COUNT " + std::to_string(count));
    EXPECT_EQ(this->names_of(list), (Names{"a", "b"}));
  }
}

TYPED_TEST(RegionLists, OneRegionMoreThanThereAreIsAnError) {
  Section section = this->section({"x", "y"});
  section.blocks[0] = Block::integer(3);
  EXPECT_NE(this->error_of(section), "nothing was thrown");
}

TYPED_TEST(RegionLists, OneRegionFewerThanThereAreIsAnError) {
  Section section = this->section({"x", "y"});
  section.blocks[0] = Block::integer(1);
  EXPECT_NE(this->error_of(section), "nothing was thrown");
}

TYPED_TEST(RegionLists, AWrongNameLengthIsAnError) {
  Section section = this->section({"x"});
  section.blocks[1] = Block::integer(-1);
  EXPECT_EQ(this->error_of(section).substr(0, 17), "NEGATIVE COUNT -1");
  section.blocks[1] = Block::integer(0x7fffffff);
  EXPECT_EQ(this->error_of(section).substr(0, 46), "COUNT 2147483647 EXCEEDS THE REST OF THE FILE ");
}

TYPED_TEST(RegionLists, AWrongCountOfEntriesIsAnError) {
  Section section = this->section({"x"});
  section.blocks[3] = Block::integer(-1);
  EXPECT_EQ(this->error_of(section).substr(0, 17), "NEGATIVE COUNT -1");
  section.blocks[3] = Block::integer(0x7fffffff);
  EXPECT_EQ(this->error_of(section).substr(0, 46), "COUNT 2147483647 EXCEEDS THE REST OF THE FILE ");
  section.blocks[3] = Block::integer(3);
  EXPECT_EQ(this->error_of(section), "TOO FEW DATA RECORDS IN A DATA BLOCK.");
}

TYPED_TEST(RegionLists, MoreRecordsThanEntriesAreAnError) {
  Section section = this->section({"x"});
  section.blocks[3] = Block::integer(1);
  section.blocks[4] = section.blocks[4].cut(1).with_rule({4, 1, 3});
  EXPECT_EQ(this->error_of(section), "TOO MANY DATA RECORDS IN A DATA BLOCK.");
}

TYPED_TEST(RegionLists, AnotherBlockBeforeTheEndRuleFails) {
  Section section = this->section({"x"});
  section.blocks.push_back(Block::integer(1));
  EXPECT_EQ(this->error_of(section), "ERROR IN FLDV4_I_END");
}

TYPED_TEST(RegionLists, AfterAnErrorTheNewRegionsStayAndTheOldOnesAreGone) {
  typename TestFixture::List list = this->list_of({"a", "b", "c"});
  const auto* old_region = list[0].get();
  Section section = this->section({"x", "y"});
  section.end_rule = testkit::Rule{0, 5, 0};
  EXPECT_EQ(this->error_of(section, list), "ERROR IN FLDV4_I_END");
  EXPECT_EQ(this->names_of(list), (Names{"x", "y"}));
  EXPECT_NE(list[0].get(), old_region);
}

TYPED_TEST(RegionLists, OfAHundredThousandRegionsAreReadWhole) {
  Names names(100000);
  for (size_t r = 0; r < names.size(); ++r) names[r] = std::to_string(r);
  const typename TestFixture::List list = this->list_of(names);
  ASSERT_EQ(list.size(), 100000U);
  EXPECT_STREQ(list[99999]->name, "99999");
}

}  // namespace
