// Reading a later file into the geometry of an earlier one.
#include "dataset/type_counts.h"
#include "testkit/byte_sink.h"
#include "tests/dataset/dataset_test.h"

namespace fld {
namespace {

using Ints = std::vector<int>;

// A one-based file with every shape is loaded; the tests read other files into its geometry.
class Reload : public testing::Test {
 protected:
  Reload() {
    testkit::File file = testkit::file_of(test::every_shape());
    file.header.set_bias(1);
    EXPECT_EQ(load(file).status, 0);
  }

  test::Reading load(const testkit::File& file) {
    path_ = test::write(directory_, "a.fld", file);
    return test::read_geometry(test::checked(path_), 0, geo_);
  }
  // A one-based file with these sections only.
  static testkit::File file_of(const std::vector<testkit::Section>& sections) {
    testkit::File file;
    file.header.set_bias(1);
    file.add_region_set().add(sections);
    return file;
  }

  Ints conn() const { return test::list(geo_.elements->conn, 12); }
  Ints volume() const { return test::list(geo_.volumes.at(0)->elem, 4); }
  Ints links() const { return test::list(geo_.surfaces.at(0)->faceLink, 3); }
  Ints face_nodes() const { return test::list(geo_.surfaces.at(1)->faceNode, 3); }
  void expect_kept_indices() const {
    EXPECT_EQ(conn(), (Ints{0, 1, 2, 0, 1, 2, 3, 0, 1, 2, 4, 0}));
    EXPECT_EQ(volume(), (Ints{0, 2, 6, 3}));
    EXPECT_EQ(links(), (Ints{-1, 2, 5}));
    EXPECT_EQ(face_nodes(), (Ints{4, 5, 6}));
  }

  testkit::TemporaryDirectory directory_;
  std::string path_;
  FLDGEO geo_;
};

TEST_F(Reload, KeepsWhatTheFileDoesNotHaveAndDoesNotShiftItAgain) {
  const FLDGEO before = geo_;
  testkit::Nodes moved = test::every_shape().nodes;
  moved.x.values()[0] = -0.5;
  const auto [status, messages] = load(file_of({testkit::nodes_section(moved)}));
  EXPECT_EQ(status, 0);
  EXPECT_EQ(messages, test::trace(path_));
  EXPECT_EQ(vfpa2double(geo_.nodes->x, 0), -0.5);
  EXPECT_NE(geo_.nodes.get(), before.nodes.get());
  EXPECT_EQ(geo_.elements.get(), before.elements.get());
  EXPECT_EQ(geo_.matOfElements.get(), before.matOfElements.get());
  EXPECT_EQ(geo_.surfaces.at(1).get(), before.surfaces.at(1).get());
  EXPECT_EQ(geo_.volumes.at(1).get(), before.volumes.at(1).get());
  expect_kept_indices();
  EXPECT_EQ(geo_.materials, (Ints{1, 2, 30}));
  EXPECT_EQ(geo_.elements->ntet, 2);
  EXPECT_EQ(geo_.volumes[1]->nprism, 1);
}

TEST_F(Reload, FileWithoutGeometryChangesNothingButTheCoordinateSystem) {
  geo_.coordinateSystem = 1;
  const FLDGEO before = geo_;
  EXPECT_EQ(load(file_of({})).status, 0);
  EXPECT_EQ(geo_.nodes.get(), before.nodes.get());
  EXPECT_EQ(geo_.coordinateSystem, 0);
  expect_kept_indices();
}

TEST_F(Reload, ShiftsNewVolumesOnly) {
  EXPECT_EQ(load(file_of({testkit::volumes_section({{.name = "new", .elements = {3, 2, 1, 0}}})})).status, 0);
  ASSERT_EQ(geo_.volumes.size(), 1U);
  EXPECT_EQ(volume(), (Ints{3, 2, 1, 0}));
  EXPECT_EQ(geo_.volumes[0]->npyr, 1);
  EXPECT_EQ(geo_.volumes[0]->nquad, 1);
  EXPECT_EQ(conn(), (Ints{0, 1, 2, 0, 1, 2, 3, 0, 1, 2, 4, 0}));
  EXPECT_EQ(links(), (Ints{-1, 2, 5}));
}

TEST_F(Reload, ShiftsNewSurfacesOnly) {
  testkit::Surface surface{.name = "new"};
  surface.add(testkit::kTriangleFace, {3, 2, 1}, 1);
  surface.add(testkit::kTriangleFace, {3, 2, 1});
  surface.add(testkit::kLineFace, {3, 2}, 0);
  EXPECT_EQ(load(file_of({testkit::surfaces_section({surface}, testkit::RegionForm::kArray)})).status, 0);
  ASSERT_EQ(geo_.surfaces.size(), 1U);
  EXPECT_EQ(links(), (Ints{1, -1, 0}));
  EXPECT_EQ(test::list(geo_.surfaces[0]->faceNode, 3), (Ints{3, 2, 1}));
  EXPECT_EQ(geo_.surfaces[0]->ntri, 2);
  EXPECT_EQ(volume(), (Ints{0, 2, 6, 3}));
}

TEST_F(Reload, ShiftsNewElementsOnlyAndCountsAgain) {
  testkit::Elements elements;
  for (int i = 0; i < 7; ++i) elements.add(testkit::kTetrahedron, {0, 1, 2, 3});
  EXPECT_EQ(load(file_of({testkit::elements_section(elements)})).status, 0);
  EXPECT_EQ(conn(), (Ints{0, 1, 2, 3, 0, 1, 2, 3, 0, 1, 2, 3}));
  EXPECT_EQ(geo_.elements->ntet, 7);
  EXPECT_EQ(geo_.volumes.at(0)->ntet, 4);
  EXPECT_EQ(geo_.volumes.at(0)->npyr, 0);
  EXPECT_EQ(geo_.volumes.at(1)->ntet, 3);
  EXPECT_EQ(volume(), (Ints{0, 2, 6, 3}));
  EXPECT_EQ(links(), (Ints{-1, 2, 5}));
}

TEST_F(Reload, NewMaterialsReplaceTheOldOnes) {
  EXPECT_EQ(load(file_of({testkit::materials_section({-1, 5, 5, 5, 5, 5, 5})})).status, 0);
  EXPECT_EQ(test::list(geo_.matOfElements->mat, 7), (Ints{1, 7, 7, 7, 7, 7, 7}));
  EXPECT_EQ(geo_.materials, (Ints{1, 7}));
  expect_kept_indices();
}

TEST_F(Reload, AnotherBiasAppliesToTheNewPiecesOnly) {
  testkit::File file = file_of({testkit::volumes_section({{.name = "new", .elements = {3, 2, 1, 0}}})});
  file.header.set_bias(1000);
  EXPECT_EQ(load(file).status, 0);
  EXPECT_EQ(volume(), (Ints{3, 2, 1, 0}));
  EXPECT_EQ(conn(), (Ints{0, 1, 2, 0, 1, 2, 3, 0, 1, 2, 4, 0}));
}

TEST_F(Reload, SameFileAgainGivesTheSame) {
  testkit::File file = testkit::file_of(test::every_shape());
  file.header.set_bias(1);
  EXPECT_EQ(load(file).status, 0);
  EXPECT_EQ(geo_.surfaces.size(), 2U);
  EXPECT_EQ(geo_.volumes.size(), 2U);
  expect_kept_indices();
  EXPECT_EQ(geo_.elements->ntet, 2);
}

TEST_F(Reload, KeptIndicesThatTheNewNodesDoNotReachAreBad) {
  testkit::Nodes fewer = test::every_shape().nodes;
  for (testkit::Reals* axis : {&fewer.x, &fewer.y, &fewer.z}) axis->values().resize(6);
  const auto [status, messages] = load(file_of({testkit::nodes_section(fewer)}));
  EXPECT_EQ(status, 0);
  EXPECT_EQ(messages, test::trace(path_));
  const BadIndices bad = count_bad_indices(geo_);
  EXPECT_EQ(bad.element_nodes, 3);
  EXPECT_EQ(bad.face_nodes, 1);
}

TEST_F(Reload, MaterialsBeforeAReadErrorAreShiftedAndListed) {
  testkit::File file = file_of({testkit::materials_section({-2, 0, 7, 0, -2, 7, 7}),
                                testkit::elements_section(test::every_shape().elements)});
  file.region_sets[0].sections[1].blocks[0] = testkit::Block::integer(8);
  const auto [status, messages] = load(file);
  EXPECT_EQ(status, -5);
  EXPECT_EQ(messages, test::trace(path_) + "ERROR : TOO FEW DATA RECORDS IN A DATA BLOCK.");
  EXPECT_EQ(test::list(geo_.matOfElements->mat, 7), (Ints{1, 3, 10, 3, 1, 10, 10}));
  EXPECT_EQ(geo_.materials, (Ints{1, 3, 10}));
}

TEST_F(Reload, MaterialsOutOfRangeBeforeAReadErrorDoNotHideThatError) {
  testkit::File file = file_of(
      {testkit::materials_section({1, 20000}), testkit::elements_section(test::every_shape().elements)});
  file.region_sets[0].sections[1].blocks[0] = testkit::Block::integer(8);
  const auto [status, messages] = load(file);
  EXPECT_EQ(status, -5);
  EXPECT_EQ(messages, test::trace(path_) + "ERROR : TOO FEW DATA RECORDS IN A DATA BLOCK.");
}

TEST_F(Reload, CopiesOfTheGeometryKeepTheOldObjects) {
  const FLDGEO before = geo_;
  EXPECT_EQ(load(test::plain_file()).status, 0);
  EXPECT_EQ(geo_.node_count(), 4);
  EXPECT_EQ(geo_.volumes.size(), 1U);
  EXPECT_EQ(before.node_count(), 8);
  EXPECT_EQ(before.volumes.size(), 2U);
  EXPECT_STREQ(before.volumes[1]->name, "solid");
}

TEST_F(Reload, FailedReadingKeepsWhatWasReadBeforeAndAllIndicesAreZeroBased) {
  testkit::File file = file_of({testkit::volumes_section({{.name = "new", .elements = {3, 2, 1, 0}}}),
                                testkit::elements_section(test::every_shape().elements)});
  testkit::Block& conn_block = file.region_sets[0].sections[1].blocks[3];
  conn_block = conn_block.cut(17).with_rule({4, 40, 2});  // the first record is all that is needed
  const FLDGEO before = geo_;
  const auto [status, messages] = load(file);
  EXPECT_EQ(status, -5);
  EXPECT_EQ(messages, test::trace(path_) + "ERROR : TOO MANY DATA RECORDS IN A DATA BLOCK.");
  ASSERT_EQ(geo_.volumes.size(), 1U);
  EXPECT_EQ(volume(), (Ints{3, 2, 1, 0}));
  EXPECT_EQ(geo_.volumes[0]->npyr, 1);
  EXPECT_EQ(geo_.elements.get(), before.elements.get());
  EXPECT_EQ(conn(), (Ints{0, 1, 2, 0, 1, 2, 3, 0, 1, 2, 4, 0}));
  EXPECT_EQ(links(), (Ints{-1, 2, 5}));
}

TEST_F(Reload, RegionsThatAreReadInPartDoNotReplaceTheOldOnes) {
  testkit::File file = file_of({testkit::surfaces_section(test::every_shape().surfaces)});
  file.region_sets[0].sections[0].blocks[2 + 6 + 1] = testkit::Block::integer(-1);  // faces of the second one
  const FLDGEO before = geo_;
  EXPECT_EQ(load(file).status, -5);
  ASSERT_EQ(geo_.surfaces.size(), 2U);
  EXPECT_EQ(geo_.surfaces[0].get(), before.surfaces[0].get());
  expect_kept_indices();
}

TEST_F(Reload, FileThatCannotBeOpenedChangesNothing) {
  geo_.coordinateSystem = 1;
  const FLDGEO before = geo_;
  FLDFile file((directory_ / "missing.fld").string());
  file.m_overlap.resize(1);
  file.m_bias = 1;
  EXPECT_EQ(test::read_geometry(file, 0, geo_).status, -2);
  EXPECT_EQ(geo_.coordinateSystem, 1);
  EXPECT_EQ(geo_.nodes.get(), before.nodes.get());
  expect_kept_indices();
}

}  // namespace
}  // namespace fld
