// Counts that a file cannot hold: refused before anything is allocated for them.
#include <cstdlib>

#include "dataset/fld.h"
#include "tests/dataset/dataset_test.h"

namespace fld {
namespace {

using testkit::Block;
using testkit::RegionForm;

// A count in a section, and the offset of the error: after it, or after the rule record of its array
// (`array`).
struct Count {
  const char* section;
  size_t block;
  bool array;
  RegionForm form = RegionForm::kPerRegion;
};

void PrintTo(const Count& count, std::ostream* out) {
  *out << count.section << " block " << count.block;
}

constexpr Count kCounts[] = {
    {"LS_SurfaceGeometry", 0, false},
    {"LS_SurfaceGeometry", 1, false},
    {"LS_SurfaceGeometry", 3, true},
    {"LS_SurfaceGeometry", 6, true},
    {"LS_SurfaceGeometryArray", 0, false, RegionForm::kArray},
    {"LS_SurfaceGeometryArray", 1, false, RegionForm::kArray},
    {"LS_SurfaceGeometryArray", 3, false, RegionForm::kArray},
    {"LS_SurfaceGeometryArray", 6, false, RegionForm::kArray},
    {"LS_VolumeGeometry", 0, false},
    {"LS_VolumeGeometry", 1, false},
    {"LS_VolumeGeometry", 3, true},
    {"LS_VolumeGeometryArray", 0, false, RegionForm::kArray},
    {"LS_VolumeGeometryArray", 1, false, RegionForm::kArray},
    {"LS_VolumeGeometryArray", 3, false, RegionForm::kArray},
    {"LS_Elements", 0, true},
    {"LS_Elements", 2, true},
    {"LS_MatOfElements", 0, true},
    {"LS_Nodes", 0, true},
};

class HostileCount : public testing::TestWithParam<Count> {
 protected:
  // Writes the file with this value for the count, or for the first of a list of counts.
  void write(std::int32_t value) {
    const Count& count = GetParam();
    testkit::File file;
    testkit::RegionSet& set = file.add_region_set();
    set.add(
        testkit::mesh_sections(test::every_shape(), {.surface_form = count.form, .volume_form = count.form}));
    std::erase_if(set.sections,
                  [&](const testkit::Section& section) { return section.title.text != count.section; });
    Block& block = set.section(count.section).blocks[count.block];
    if (const auto* integers = std::get_if<testkit::Ints>(&block.data)) {
      std::vector<std::int32_t> values(static_cast<size_t>(integers->size()));
      integers->read(0, values);
      values[0] = value;
      block.data = testkit::Ints(values);
    } else {
      block = Block::long_integer(value, block.width);
    }
    file_.m_path = test::write(directory_, "a.fld", file, &places_);
    ASSERT_EQ(file_.checkSections(), 0);
  }
  std::string place() const {
    const auto behind = places_.of(GetParam().section).blocks[GetParam().block + 1];
    return std::to_string(behind + (GetParam().array ? 20 : 0));
  }

  testkit::TemporaryDirectory directory_;
  testkit::Places places_;
  FLDFile file_{""};
};

TEST_P(HostileCount, TooLargeIsAReadError) {
  write(2147483647);
  FLDGEO geo;
  const auto [status, messages] = test::read_geometry(file_, 0, geo);
  EXPECT_EQ(status, -5);
  EXPECT_EQ(messages, test::trace(file_.m_path) +
                          "ERROR : COUNT 2147483647 EXCEEDS THE REST OF THE FILE AT BYTE " + place() + ".");
  EXPECT_FALSE(test::is_open(file_.m_path));
}

TEST_P(HostileCount, NegativeIsAReadError) {
  write(-5);
  FLDGEO geo;
  const auto [status, messages] = test::read_geometry(file_, 0, geo);
  EXPECT_EQ(status, -5);
  EXPECT_EQ(messages, test::trace(file_.m_path) + "ERROR : NEGATIVE COUNT -5 AT BYTE " + place() + ".");
}

TEST_P(HostileCount, LeavesNothingAllocated) {
  write(2147483647);
  set_memory();
  {
    FLDGEO geo;
    EXPECT_EQ(test::read_geometry(file_, 0, geo).status, -5);
  }
  test::Messages leaks;
  free_memory();
  EXPECT_EQ(leaks.text(), "");
}

INSTANTIATE_TEST_SUITE_P(EverySection, HostileCount, testing::ValuesIn(kCounts), [](const auto& info) {
  return std::string(info.param.section) + "Block" + std::to_string(info.param.block);
});

// A file that claims a connectivity of `length` entries.
test::Reading read_connectivity_of(std::int64_t length, testkit::Places& places) {
  const testkit::TemporaryDirectory directory;
  testkit::File file;
  file.add_region_set().add(testkit::elements_section(test::every_shape().elements));
  file.region_sets[0].sections[0].blocks[2] = Block::long_integer(length, 8);
  const FLDFile checked = test::checked(test::write(directory, "a.fld", file, &places));
  FLDGEO geo;
  test::Reading reading = test::read_geometry(checked, 0, geo);
  EXPECT_EQ(reading.messages.substr(0, test::trace(checked.m_path).size()), test::trace(checked.m_path));
  reading.messages.erase(0, test::trace(checked.m_path).size());
  return reading;
}

TEST(HostileConnectivity, LengthBeyond32BitsIsAReadError) {
  for (const std::int64_t length :
       {std::int64_t{1} << 40, std::int64_t{1} << 62, std::numeric_limits<std::int64_t>::max()}) {
    testkit::Places places;
    const auto [status, message] = read_connectivity_of(length, places);
    EXPECT_EQ(status, -5);
    EXPECT_EQ(message, "ERROR : COUNT " + std::to_string(length) + " EXCEEDS THE REST OF THE FILE AT BYTE " +
                           std::to_string(places.of("LS_Elements").blocks[3] + 20) + ".");
  }
}

TEST(HostileConnectivity, NegativeLengthIsAReadError) {
  testkit::Places places;
  const auto [status, message] = read_connectivity_of(std::numeric_limits<std::int64_t>::min(), places);
  EXPECT_EQ(status, -5);
  EXPECT_EQ(message, "ERROR : NEGATIVE COUNT -9223372036854775808 AT BYTE " +
                         std::to_string(places.of("LS_Elements").blocks[3] + 20) + ".");
}

TEST(HostileMotion, CountsAreReadErrorsOfValidation) {
  const testkit::TemporaryDirectory directory;
  // Name length, regions, names and actions of the first region.
  for (const size_t block : {0U, 2U, 3U, 5U}) {
    testkit::File file = test::plain_file();
    testkit::Section motion = testkit::motion_section(
        {.base_cycle = 0, .regions = {{.names = {"fluid"}, .actions = {testkit::Action::translate({})}}}});
    motion.blocks[block] = Block::integer(2147483647);
    file.region_sets[0].add(motion);
    testkit::Places places;
    const std::string path = test::write(directory, "a.fld", file, &places);
    FLD fld;
    EXPECT_EQ(test::read_error([&] { return fld.searchFLD(path.c_str()); }),
              "COUNT 2147483647 EXCEEDS THE REST OF THE FILE AT BYTE " +
                  std::to_string(places.of("LS_ALE").blocks[block + 1]) + ".");
    EXPECT_FALSE(test::is_open(path));
  }
}

TEST(HostileQuantity, ValueCountDoesNotMatterToTheIndex) {
  const testkit::TemporaryDirectory directory;
  testkit::File file = test::plain_file();
  testkit::Section scalar = testkit::scalar_section({.name = "P", .label = "", .values = {1.0, 2.0}});
  scalar.blocks[1] = Block::integer(2147483647);
  file.region_sets[0].add(scalar);
  FLDFile checked = test::checked(test::write(directory, "a.fld", file));
  test::Messages messages;
  EXPECT_EQ(checked.seekFLD(), 0);
  EXPECT_NE(checked.findSeekScalar("P", 0), nullptr);
}

}  // namespace
}  // namespace fld
