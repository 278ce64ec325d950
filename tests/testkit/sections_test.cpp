// The layouts of header items and sections, byte by byte.
#include <gtest/gtest.h>
#include <stdexcept>

#include "testkit/description.h"
#include "testkit/file_writer.h"
#include "testkit/record_writer.h"
#include "tests/testkit/hex.h"

namespace {

using testkit::Action;
using testkit::Precision;
using testkit::RegionForm;
using testkit::Section;
using testkit::Surface;
using testkit::Volume;

// The bytes of a section after its title record.
std::string body(const Section& section, std::int32_t shift = 0) {
  testkit::StringSink sink;
  testkit::RecordWriter writer(sink);
  if (section.leading) writer.block(testkit::Block::integer(*section.leading));
  for (const auto& block : section.blocks) writer.block(block, shift);
  if (section.end_rule) writer.rule(*section.end_rule);
  return sink.bytes();
}

constexpr const char* kEnd = " 0000000c 00000000 00000000 00000000 0000000c ";

// Rule and record of one 4-byte integer in hexadecimal digits.
std::string one(const std::string& digits) {
  return " 0000000c 00000004 00000001 00000001 0000000c 00000004 " + digits + " 00000004 ";
}

std::vector<Surface> two_surfaces() {
  Surface left{.name = "left"};
  left.add(testkit::kTriangleFace, {0, 1, 2}, 0);
  left.add(testkit::kLineFace, {3, 4});
  Surface top{.name = "&VFG_t"};
  top.add(testkit::kQuadrilateralFace, {1, 2, 6, 5}, 9);
  return {left, top};
}

TEST(HeaderItems, DimensionAndBiasAreOneInteger) {
  testkit::Header header;
  header.set_dimension(3);
  header.set_bias(1);
  EXPECT_EQ(header.items[0].title.text, "Dimension");
  EXPECT_BYTES(body(header.items[0]), one("00000003") + kEnd);
  EXPECT_EQ(header.items[1].title.text, "Bias");
  EXPECT_BYTES(body(header.items[1]), one("00000001") + kEnd);
}

TEST(HeaderItems, CycleIsAnIntegerAndATimeInEitherPrecision) {
  testkit::Header header;
  header.set_cycle(100, 0.5);
  EXPECT_BYTES(body(header.item("Cycle")), one("00000064") + "0000000c 00000008 00000001 00000001 0000000c" +
                                               "00000008 3fe0000000000000 00000008" + kEnd);
  header.set_cycle(100, 0.5, Precision::kSingle);
  EXPECT_BYTES(body(header.item("Cycle")), one("00000064") + one("3f000000") + kEnd);
  EXPECT_EQ(header.items.size(), 1U);
}

TEST(HeaderItems, UnusedHasBothPrecisions) {
  testkit::Header header;
  header.set_unused(1.0e30F, 1.0e30);
  EXPECT_BYTES(body(header.items[0]), one("7149f2ca") + "0000000c 00000008 00000001 00000001 0000000c" +
                                          "00000008 46293e5939a08cea 00000008" + kEnd);
}

TEST(HeaderItems, CanBeReplacedRemovedAndAdded) {
  testkit::Header header = testkit::Header::usual();
  const auto count = header.items.size();
  header.set(testkit::header_item("Mystery", {testkit::Block::raw("?")}));
  EXPECT_EQ(header.items.size(), count + 1);
  header.remove("Bias");
  EXPECT_FALSE(header.has("Bias"));
  EXPECT_EQ(header.bias(), 0);
  header.set_bias(3);
  EXPECT_EQ(header.bias(), 3);
  EXPECT_EQ(header.items.back().title.text, "Bias");
  EXPECT_THROW(header.item("Nothing"), std::out_of_range);
}

TEST(Sections, CoordinateSystem) {
  EXPECT_BYTES(body(testkit::coordinate_system_section(1)), one("00000000") + one("00000001") + kEnd);
}

TEST(Sections, Nodes) {
  testkit::Nodes nodes{.x = {1.0, 2.0}, .y = {3.0, 4.0}, .z = {5.0, 6.0}};
  nodes.precision = {Precision::kDouble, Precision::kSingle, Precision::kSingle};
  EXPECT_BYTES(body(testkit::nodes_section(nodes)), one("00000000") + one("00000002") +
                                                        "0000000c 00000008 00000002 00000001 0000000c"
                                                        "00000010 3ff0000000000000 4000000000000000 00000010"
                                                        "0000000c 00000004 00000002 00000001 0000000c"
                                                        "00000008 40400000 40800000 00000008"
                                                        "0000000c 00000004 00000002 00000001 0000000c"
                                                        "00000008 40a00000 40c00000 00000008" +
                                                        kEnd);
}

TEST(Sections, ElementsWithBothWidthsOfTheLength) {
  testkit::Elements elements;
  elements.add(testkit::kTetrahedron, {0, 1, 2, 3});
  elements.add(99, {});
  const std::string start = one("00000000") + one("00000002") +
                            "0000000c 00000004 00000002 00000001 0000000c"
                            "00000008 00000022 00000063 00000008";
  const std::string conn =
      "0000000c 00000004 00000004 00000001 0000000c"
      "00000010 00000001 00000002 00000003 00000004 00000010";
  EXPECT_BYTES(body(testkit::elements_section(elements), 1),
               start +
                   "0000000c 00000008 00000001 00000001 0000000c"
                   "00000008 0000000000000004 00000008" +
                   conn + kEnd);
  EXPECT_BYTES(body(testkit::elements_section(elements, 4), 1), start + one("00000004") + conn + kEnd);
}

TEST(Sections, Materials) {
  EXPECT_BYTES(body(testkit::materials_section({7, -1}), 1),
               one("00000000") + one("00000002") +
                   "0000000c 00000004 00000002 00000001 0000000c"
                   "00000008 00000007 ffffffff 00000008" +
                   kEnd);
}

TEST(Sections, SurfacesRegionByRegion) {
  const Section section = testkit::surfaces_section(two_surfaces());
  EXPECT_EQ(section.title.text, "LS_SurfaceGeometry");
  EXPECT_BYTES(body(section, 1),
               one("00000000") + one("00000002") + one("00000006") +
                   "0000000c 00000001 00000006 00000001 0000000c 00000006 'left  ' 00000006" +
                   one("00000002") +
                   "0000000c 00000004 00000002 00000001 0000000c"
                   "00000008 00000085 0000007a 00000008"
                   "0000000c 00000004 00000002 00000001 0000000c"
                   "00000008 00000001 ffffffff 00000008" +
                   one("00000005") +
                   "0000000c 00000004 00000005 00000001 0000000c"
                   "00000014 00000001 00000002 00000003 00000004 00000005 00000014"
                   "0000000c 00000001 00000006 00000001 0000000c 00000006 '&VFG_t' 00000006" +
                   one("00000001") + one("00000086") + one("0000000a") + one("00000004") +
                   "0000000c 00000004 00000004 00000001 0000000c"
                   "00000010 00000002 00000003 00000007 00000006 00000010" +
                   kEnd);
}

TEST(Sections, SurfacesGathered) {
  const Section section = testkit::surfaces_section(two_surfaces(), RegionForm::kArray, 7);
  EXPECT_EQ(section.title.text, "LS_SurfaceGeometryArray");
  EXPECT_BYTES(body(section, 1),
               one("00000000") + one("00000002") + one("00000007") +
                   "0000000c 00000001 0000000e 00000001 0000000c 0000000e 'left   &VFG_t ' 0000000e"
                   "0000000c 00000004 00000002 00000001 0000000c 00000008 00000002 00000001 00000008"
                   "0000000c 00000004 00000003 00000001 0000000c 0000000c 00000085 0000007a 00000086 0000000c"
                   "0000000c 00000004 00000003 00000001 0000000c 0000000c 00000001 ffffffff 0000000a 0000000c"
                   "0000000c 00000004 00000002 00000001 0000000c 00000008 00000005 00000004 00000008"
                   "0000000c 00000004 00000009 00000001 0000000c"
                   "00000024 00000001 00000002 00000003 00000004 00000005"
                   "00000002 00000003 00000007 00000006 00000024" +
                   kEnd);
}

TEST(Sections, VolumesInBothForms) {
  const std::vector<Volume> volumes{{.name = "stator", .elements = {0, 2}}, {.name = "", .elements = {1}}};
  const Section section = testkit::volumes_section(volumes);
  EXPECT_EQ(section.title.text, "LS_VolumeGeometry");
  EXPECT_BYTES(body(section, 1),
               one("00000000") + one("00000002") + one("00000006") +
                   "0000000c 00000001 00000006 00000001 0000000c 00000006 'stator' 00000006" +
                   one("00000002") +
                   "0000000c 00000004 00000002 00000001 0000000c"
                   "00000008 00000001 00000003 00000008"
                   "0000000c 00000001 00000006 00000001 0000000c 00000006 '      ' 00000006" +
                   one("00000001") + one("00000002") + kEnd);
  const Section gathered = testkit::volumes_section(volumes, RegionForm::kArray);
  EXPECT_EQ(gathered.title.text, "LS_VolumeGeometryArray");
  EXPECT_BYTES(body(gathered, 1), one("00000000") + one("00000002") + one("00000006") +
                                      "0000000c 00000001 0000000c 00000001 0000000c"
                                      "0000000c 'stator      ' 0000000c"
                                      "0000000c 00000004 00000002 00000001 0000000c"
                                      "00000008 00000002 00000001 00000008"
                                      "0000000c 00000004 00000003 00000001 0000000c"
                                      "0000000c 00000001 00000003 00000002 0000000c" +
                                      kEnd);
}

TEST(Sections, NoRegions) {
  const std::string start = one("00000000") + one("00000000") + one("00000001");
  EXPECT_BYTES(body(testkit::volumes_section({})), start + kEnd);
  EXPECT_BYTES(body(testkit::surfaces_section({})), start + kEnd);
  EXPECT_BYTES(body(testkit::volumes_section({}, RegionForm::kArray)),
               start +
                   "0000000c 00000001 00000000 00000000 0000000c"
                   "0000000c 00000004 00000000 00000000 0000000c"
                   "0000000c 00000004 00000000 00000000 0000000c" +
                   kEnd);
}

TEST(Sections, Scalar) {
  const Section section =
      testkit::scalar_section({.name = "p", .label = "Pressure [Pa]", .values = {1.0, 2.0}});
  EXPECT_EQ(section.title.payload(), "LS_Scalar:p                     ");
  EXPECT_BYTES(body(section), one("00000000") +
                                  "0000000c 00000001 00000020 00000001 0000000c"
                                  "00000020 'Pressure [Pa]                   ' 00000020" +
                                  one("00000002") +
                                  "0000000c 00000004 00000002 00000001 0000000c"
                                  "00000008 3f800000 40000000 00000008" +
                                  kEnd);
}

TEST(Sections, VectorWithAPrecisionPerComponent) {
  const Section section =
      testkit::vector_section({.name = "U",
                               .label = "Velocity [m/s]",
                               .x = {1.0},
                               .y = {2.0},
                               .z = {3.0},
                               .precision = {Precision::kSingle, Precision::kDouble, Precision::kSingle},
                               .leading = 6});
  EXPECT_EQ(section.title.payload(), "LS_Vector:U                     ");
  EXPECT_BYTES(body(section), one("00000000") + one("00000006") +
                                  "0000000c 00000001 00000020 00000001 0000000c"
                                  "00000020 'Velocity [m/s]                  ' 00000020" +
                                  one("00000001") + one("3f800000") +
                                  "0000000c 00000008 00000001 00000001 0000000c"
                                  "00000008 4000000000000000 00000008" +
                                  one("40400000") + kEnd);
}

TEST(Sections, NamesOfQuantitiesHaveToFitTheTitle) {
  EXPECT_EQ(testkit::scalar_section({.name = std::string(22, 'n')}).title.payload().size(), 32U);
  EXPECT_THROW(testkit::scalar_section({.name = std::string(23, 'n')}), std::invalid_argument);
  EXPECT_THROW(testkit::vector_section({.name = std::string(23, 'n')}), std::invalid_argument);
}

TEST(Sections, MotionWithRotation) {
  const Section section = testkit::motion_section(
      {.base_cycle = 10,
       .regions = {{.names = {"rotor"}, .actions = {Action::rotate({1.0, 2.0, 3.0}, {0.0, 0.0, 1.0}, 0.5)}}},
       .precision = Precision::kSingle,
       .name_length = 8});
  EXPECT_EQ(section.title.text, "LS_ALE");
  EXPECT_BYTES(
      body(section),
      one("00000000") + one("00000008") + one("0000000a") + one("00000001") + one("00000001") +
          "0000000c 00000001 00000008 00000001 0000000c 00000008 'rotor   ' 00000008" + one("00000001") +
          "0000000c 00000001 00000008 00000001 0000000c 00000008 'Rotate  ' 00000008" + one("00000003") +
          "0000000c 00000004 00000003 00000001 0000000c"
          "0000000c 3f800000 40000000 40400000 0000000c"
          "0000000c 00000004 00000003 00000001 0000000c"
          "0000000c 00000000 00000000 3f800000 0000000c" +
          one("3f000000") + kEnd);
}

TEST(Sections, MotionsOfOtherKinds) {
  // Blocks 0 to 5 are the lengths, the base, the counts and the one name.
  const auto blocks_of = [](const Action& action) {
    return testkit::motion_section({.regions = {{.names = {"r"}, .actions = {action}}}}).blocks;
  };
  const auto translate = blocks_of(Action::translate({1.0, 2.0, 3.0}));
  ASSERT_EQ(translate.size(), 9U);
  EXPECT_EQ(std::get<std::string>(translate[6].data), "Translate");
  EXPECT_EQ(std::get<testkit::Ints>(translate[7].data).values().front(), 1);
  EXPECT_EQ(std::get<testkit::Reals>(translate[8].data).values(), (std::vector<double>{1.0, 2.0, 3.0}));
  const auto scale = blocks_of(Action::scale({1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}));
  ASSERT_EQ(scale.size(), 10U);
  EXPECT_EQ(std::get<testkit::Ints>(scale[7].data).values().front(), 2);
  EXPECT_EQ(std::get<testkit::Reals>(scale[9].data).values(), (std::vector<double>{4.0, 5.0, 6.0}));
  const auto points = blocks_of(Action::four_points({{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
                                                    {{{5, 0, 0}, {6, 0, 0}, {5, 1, 0}, {5, 0, 1}}}));
  ASSERT_EQ(points.size(), 16U);
  EXPECT_EQ(std::get<std::string>(points[6].data), "4Points");
  EXPECT_EQ(std::get<testkit::Ints>(points[7].data).values().front(), 8);
  EXPECT_EQ(std::get<testkit::Reals>(points[9].data).values(), (std::vector<double>{1.0, 0.0, 0.0}));
  EXPECT_EQ(std::get<testkit::Reals>(points[15].data).values(), (std::vector<double>{5.0, 0.0, 1.0}));
}

TEST(Sections, MotionsCanBeWrong) {
  Action action{.kind = "Wobble", .items = {{1.0, 2.0}}, .item_count = 9};
  const auto blocks = testkit::motion_section({.regions = {{.names = {}, .actions = {action}}}}).blocks;
  ASSERT_EQ(blocks.size(), 8U);
  EXPECT_EQ(std::get<testkit::Ints>(blocks[6].data).values().front(), 9);
  EXPECT_EQ(std::get<testkit::Reals>(blocks[7].data).values().size(), 2U);
  EXPECT_EQ(testkit::motion_section({}).blocks.size(), 3U);
}

}  // namespace
