// FLDFile::readGeometry on files that it cannot read: result, message, file closed, nothing leaked.
#include <filesystem>

#include "testkit/byte_sink.h"
#include "tests/dataset/dataset_test.h"

namespace fld {
namespace {

using testkit::Block;

class FailedReading : public testing::Test {
 protected:
  // A file that was plain_file() when it was validated.
  static FLDFile unchecked(const std::string& path) {
    testkit::Places places;
    testkit::to_bytes(test::plain_file(), &places);
    FLDFile file(path);
    file.m_overlap.resize(1);
    file.m_overlap[0].m_begin = static_cast<std::int64_t>(places.of("OverlapStart_1").offset);
    return file;
  }
  test::Reading read(const std::string& path) {
    FLDGEO geo;
    test::Reading reading = test::read_geometry(unchecked(path), 0, geo);
    EXPECT_FALSE(test::is_open(path));
    return reading;
  }
  // Reads the file and expects the result and the text after the trace.
  void expect(const testkit::File& file, int status, const std::string& message) {
    const std::string path = test::write(directory_, "a.fld", file);
    const test::Reading reading = read(path);
    EXPECT_EQ(reading.status, status);
    EXPECT_EQ(reading.messages, test::trace(path) + message);
  }

  testkit::TemporaryDirectory directory_;
};

TEST_F(FailedReading, MissingFileIsMinus2) {
  const std::string path = (directory_ / "missing.fld").string();
  const auto [status, messages] = read(path);
  EXPECT_EQ(status, -2);
  EXPECT_EQ(messages, test::trace(path) + "FAILED TO OPEN " + path + "\n");
}

TEST_F(FailedReading, FolderIsMinus2) {
  const std::string path = directory_.path().string();
  const auto [status, messages] = read(path);
  EXPECT_EQ(status, -2);
  EXPECT_EQ(messages, test::trace(path) + "FAILED TO OPEN " + path + "\n");
}

TEST_F(FailedReading, OtherMagicIsMinus3) {
  testkit::File file = test::plain_file();
  file.magic = "VTRL-FLE";
  expect(file, -3, "This is not FLD file.\n");
}

TEST_F(FailedReading, EmptyFileIsMinus3) {
  const std::string path = (directory_ / "empty.fld").string();
  testkit::write_bytes(path, "");
  const auto [status, messages] = read(path);
  EXPECT_EQ(status, -3);
  EXPECT_EQ(messages, test::trace(path) + "This is not FLD file.\n");
}

TEST_F(FailedReading, OtherVersionIsMinus4) {
  testkit::File file = test::plain_file();
  file.version = 3;
  expect(file, -4, "FLD FILE VERSION HAS TO BE 4.\n");
}

TEST_F(FailedReading, TwoDimensionsAreMinus4) {
  testkit::File file = test::plain_file();
  file.header.set_dimension(2);
  expect(file, -4, "L2D3D MUST BE 3 IN FLD\n");
}

TEST_F(FailedReading, DimensionIsCheckedBehindTheHeader) {
  testkit::File file = test::plain_file();
  file.header.set_dimension(2);
  file.header.item("Unused").end_rule = testkit::Rule{0, 5, 0};
  expect(file, -5, "ERROR : ERROR IN FLDV4_I_END");
}

TEST_F(FailedReading, EndRuleThatIsNoneIsMinus5) {
  for (const char* title :
       {"LS_SurfaceGeometry", "LS_VolumeGeometry", "LS_Elements", "LS_MatOfElements", "LS_Nodes"}) {
    SCOPED_TRACE(title);
    testkit::File file;
    file.add_region_set().add(testkit::mesh_sections(test::every_shape()));
    std::erase_if(file.region_sets[0].sections,
                  [&](const testkit::Section& section) { return section.title.text != title; });
    file.region_sets[0].section(title).end_rule = testkit::Rule{0, 5, 0};
    expect(file, -5, "ERROR : ERROR IN FLDV4_I_END");
  }
}

TEST_F(FailedReading, CoordinatesOfAnotherWidthAreMinus5) {
  for (const int width : {2, 16, 0, -4}) {
    testkit::File file = test::plain_file();
    file.region_sets[0].sections.clear();
    file.region_sets[0].add(testkit::nodes_section(testkit::one_tetrahedron().nodes));
    Block& y = file.region_sets[0].section("LS_Nodes").blocks[2];
    y = y.with_rule({width, 4, 1});
    expect(file, -5, "ERROR : THIS FLD FILE HAS AN INVALID DATA TYPE.");
  }
}

TEST_F(FailedReading, MoreRecordsThanValuesAreMinus5) {
  testkit::File file;
  testkit::Section materials = testkit::materials_section({1, 2, 3, 4});
  materials.blocks[1] = materials.blocks[1].cut(1);
  materials.blocks[0] = Block::integer(2);
  file.add_region_set().add(materials);
  expect(file, -5, "ERROR : TOO MANY DATA RECORDS IN A DATA BLOCK.");
}

TEST_F(FailedReading, FewerRecordsThanValuesAreMinus5) {
  for (const testkit::Rule& rule : {testkit::Rule{4, 4, 0}, {4, 0, 0}, {4, 3, 1}, {4, 0, 5}}) {
    testkit::File file;
    testkit::Section materials = testkit::materials_section({1, 2, 3, 4});
    materials.blocks[1] = Block::rule_alone(rule);
    file.add_region_set().add(materials);
    expect(file, -5, "ERROR : TOO FEW DATA RECORDS IN A DATA BLOCK.");
  }
}

TEST_F(FailedReading, FewerBlocksThanTheLayoutAreMinus5) {
  for (const char* title : {"LS_Nodes", "LS_Elements", "LS_MatOfElements", "LS_SurfaceGeometry"}) {
    testkit::File file = test::plain_file();
    file.region_sets[0].section(title).blocks.pop_back();
    expect(file, -5, "ERROR : ERROR IN FLDV4_I_END");
  }
}

TEST_F(FailedReading, NegativeNumberOfRecordsOfNegativeSizeIsMinus5) {
  testkit::File file;
  testkit::Section materials = testkit::materials_section({1, 2, 3, 4});
  materials.blocks[1] = Block::rule_alone({4, -3, -3});
  file.add_region_set().add(materials);
  const auto [status, messages] = read(test::write(directory_, "a.fld", file));
  EXPECT_EQ(status, -5);
  EXPECT_NE(messages.find("\nERROR : "), std::string::npos) << messages;
}

TEST_F(FailedReading, MaterialNumbersOutsideTheirRangeAreMinus5) {
  for (const testkit::Ints& numbers : {testkit::Ints{10000}, testkit::Ints{1, 2147483647},
                                       testkit::Ints{-1, 9998}, testkit::Ints{-2147483647 - 1, 2147483647}}) {
    testkit::File file;
    file.add_region_set().add(testkit::materials_section(numbers));
    expect(file, -5, "ERROR : MATERIAL NUMBER OUT OF RANGE.");
  }
}

TEST_F(FailedReading, MissingEndIsMinus5) {
  testkit::File file = test::plain_file();
  file.closer.reset();
  const std::string size = std::to_string(testkit::to_bytes(file).size());
  expect(file, -5, "ERROR : UNEXPECTED END OF FILE AT BYTE " + size + ".");
}

TEST_F(FailedReading, FileThatBreaksOffInItsNodesSaysNothingElse) {
  testkit::File file = test::plain_file();
  testkit::Places places;
  const std::string whole = testkit::to_bytes(file, &places);
  const std::string path = (directory_ / "cut.fld").string();
  const auto end = places.of("LS_Nodes").blocks[2];
  testkit::write_bytes(path, whole.substr(0, end));
  const auto [status, messages] = read(path);
  EXPECT_EQ(status, -5);
  EXPECT_EQ(messages,
            test::trace(path) + "ERROR : UNEXPECTED END OF FILE AT BYTE " + std::to_string(end) + ".");
}

TEST_F(FailedReading, FileThatBreaksOffAnywhereIsMinus5AndLeavesNothingBehind) {
  for (const testkit::RegionForm form : {testkit::RegionForm::kPerRegion, testkit::RegionForm::kArray}) {
    testkit::File file = testkit::file_of(test::every_shape(), {.surface_form = form, .volume_form = form});
    file.header.set_bias(1);
    const std::string path = test::write(directory_, "cut.fld", file);
    for (auto length = std::filesystem::file_size(path) - 1; length >= 16; --length) {
      std::filesystem::resize_file(path, length);
      set_memory();
      const auto [status, messages] = read(path);
      ASSERT_EQ(status, -5) << length;
      ASSERT_EQ(messages.substr(0, test::trace(path).size()), test::trace(path)) << length;
      ASSERT_NE(messages.find("ERROR : UNEXPECTED END OF FILE AT BYTE "), std::string::npos) << length;
      ASSERT_EQ(messages.back(), '.') << length;
      test::Messages leaks;
      free_memory();
      ASSERT_EQ(leaks.text(), "") << length;
    }
  }
}

TEST_F(FailedReading, AnotherReadingAfterItWorks) {
  testkit::File bad = test::plain_file();
  bad.closer.reset();
  const std::string bad_path = test::write(directory_, "bad.fld", bad);
  const std::string path = test::write(directory_, "good.fld", test::plain_file());
  FLDGEO geo;
  EXPECT_EQ(test::read_geometry(unchecked(bad_path), 0, geo).status, -5);
  EXPECT_EQ(test::read_geometry(unchecked(path), 0, geo).status, 0);
  EXPECT_EQ(geo.surfaces.size(), 1U);
  EXPECT_EQ(geo.volumes.size(), 1U);
  EXPECT_EQ(geo.elements->ntet, 1);
  EXPECT_EQ(test::list(geo.elements->conn, geo.elements->nconn), (std::vector<int>{0, 1, 2, 3}));
}

}  // namespace
}  // namespace fld
