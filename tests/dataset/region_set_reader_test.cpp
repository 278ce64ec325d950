// Which sections of a file belong to which region set.
#include "dataset/region_set_reader.h"

#include "tests/dataset/dataset_test.h"

namespace fld {
namespace {

// A mesh of `count` nodes and nothing else.
testkit::Section nodes(int count) {
  testkit::Nodes list;
  for (int i = 0; i < count; ++i) list.add(i, 0.0, 0.0);
  return testkit::nodes_section(list);
}

class RegionSets : public testing::Test {
 protected:
  // The number of nodes in each region set of the file, -1 where there are none.
  std::vector<int> nodes_of(const testkit::File& file) {
    const std::string path = test::write(directory_, "a.fld", file);
    const FLDFile checked = test::checked(path);
    std::vector<int> counts;
    for (int region = 0; region < static_cast<int>(checked.m_overlap.size()); ++region) {
      FLDGEO geo;
      const auto [status, messages] = test::read_geometry(checked, region, geo);
      EXPECT_EQ(status, 0) << messages;
      counts.push_back(geo.nodes ? geo.nodes->nnode : -1);
    }
    return counts;
  }

  testkit::TemporaryDirectory directory_;
};

TEST_F(RegionSets, EachIsWhatStandsBetweenItsOpeningAndTheNext) {
  testkit::File file;
  for (int i = 0; i < 4; ++i) file.add_region_set();
  file.region_sets[0].add(nodes(3));
  file.region_sets[2].add(nodes(5));
  file.region_sets[3].add(nodes(6));
  EXPECT_EQ(nodes_of(file), (std::vector<int>{3, -1, 5, 6}));
}

TEST_F(RegionSets, TitleBehindTheOpeningsBeginningDoesNotMatter) {
  testkit::File file;
  for (const char* opener : {"OverlapStart_", "OverlapStart_1", "OverlapStart_1"}) {
    file.add_region_set().opener = opener;
  }
  for (int i = 0; i < 3; ++i) file.region_sets[static_cast<size_t>(i)].add(nodes(i + 1));
  EXPECT_EQ(nodes_of(file), (std::vector<int>{1, 2, 3}));
}

TEST_F(RegionSets, SectionsBeforeTheFirstBelongToNone) {
  testkit::File file;
  file.add_region_set().opener.reset();
  file.region_sets[0].add(nodes(3));
  file.add_region_set();
  file.add_region_set().add(nodes(4));
  EXPECT_EQ(nodes_of(file), (std::vector<int>{-1, 4}));
}

TEST_F(RegionSets, DamageBehindTheRequestedOneDoesNotMatter) {
  testkit::File file;
  file.add_region_set().add(nodes(3));
  file.add_region_set().add(nodes(4));
  file.region_sets[1].sections[0].blocks[0] = testkit::Block::integer(-7);
  const FLDFile checked = test::checked(test::write(directory_, "a.fld", file));
  FLDGEO geo;
  EXPECT_EQ(test::read_geometry(checked, 0, geo).status, 0);
  EXPECT_EQ(geo.node_count(), 3);
  EXPECT_EQ(test::read_geometry(checked, 1, geo).status, -5);
}

TEST_F(RegionSets, ThoseOfMeshesAreReadOneByOne) {
  testkit::File file;
  file.header.set_bias(1);
  file.add_region_set().add(testkit::mesh_sections(testkit::one_tetrahedron()));
  file.add_region_set().add(testkit::mesh_sections(testkit::one_of_each()));
  const FLDFile checked = test::checked(test::write(directory_, "a.fld", file));
  FLDGEO first;
  FLDGEO second;
  EXPECT_EQ(test::read_geometry(checked, 0, first).status, 0);
  EXPECT_EQ(test::read_geometry(checked, 1, second).status, 0);
  EXPECT_EQ(first.node_count(), 4);
  EXPECT_EQ(first.element_count(), 1);
  EXPECT_EQ(first.surfaces.size(), 1U);
  EXPECT_EQ(first.volumes.size(), 1U);
  EXPECT_EQ(first.materials, std::vector<int>{1});
  EXPECT_EQ(second.node_count(), 11);
  EXPECT_EQ(second.element_count(), 4);
  EXPECT_EQ(second.surfaces.size(), 2U);
  EXPECT_EQ(second.volumes.size(), 2U);
  EXPECT_EQ(second.materials, (std::vector<int>{1, 2}));
  EXPECT_EQ(second.surfaces[0]->ntri, 6);
  EXPECT_EQ(second.surfaces[0]->nquad, 6);
}

TEST_F(RegionSets, OneThatTheFileDoesNotHaveIsRefusedWithoutOpeningIt) {
  testkit::File file;
  file.add_region_set().add(nodes(3));
  file.add_region_set().add(nodes(4));
  FLDFile checked = test::checked(test::write(directory_, "a.fld", file));
  checked.m_path = (directory_ / "missing.fld").string();
  for (const int region : {2, 3, 2147483647, -1, -2147483647 - 1}) {
    FLDGEO geo;
    geo.coordinateSystem = 1;
    const auto [status, messages] = test::read_geometry(checked, region, geo);
    EXPECT_EQ(status, -1) << region;
    EXPECT_EQ(messages, test::trace(checked.m_path) + "INVALID OVERLAP REGION WAS SPECIFIED.\n") << region;
    EXPECT_EQ(geo.coordinateSystem, 1) << region;
  }
}

TEST_F(RegionSets, OneThatIsNotWhereValidationFoundItIsLookedForFromTheHeaderOn) {
  testkit::File file;
  file.add_region_set().add(nodes(3));
  file.add_region_set().add(nodes(4));
  FLDFile checked = test::checked(test::write(directory_, "a.fld", file));
  for (const std::int64_t offset : {std::int64_t{0}, checked.m_overlap[1].m_begin + 40}) {
    checked.m_overlap[1].m_begin = offset;
    FLDGEO geo;
    EXPECT_EQ(test::read_geometry(checked, 1, geo).status, 0) << offset;
    EXPECT_EQ(geo.node_count(), 4) << offset;
  }
  EXPECT_FALSE(test::is_open(checked.m_path));
}

TEST_F(RegionSets, OneThatTheFileHasNoLongerIsAReadError) {
  testkit::File file = test::plain_file();
  file.add_region_set().add(nodes(4));
  FLDFile checked = test::checked(test::write(directory_, "a.fld", file));
  file.region_sets.pop_back();
  testkit::Places places;
  test::write(directory_, "a.fld", file, &places);
  checked.m_overlap[1].m_begin = static_cast<std::int64_t>(places.size);
  FLDGEO geo;
  const auto [status, messages] = test::read_geometry(checked, 1, geo);
  EXPECT_EQ(status, -5);
  EXPECT_EQ(messages, test::trace(checked.m_path) + "ERROR : A REGION SET CANNOT BE FOUND.");
}

TEST_F(RegionSets, SectionsLoadedAreTold) {
  const auto loaded_from = [this](const char* kept) {
    testkit::File file = testkit::file_of(testkit::one_tetrahedron());
    std::erase_if(file.region_sets[0].sections,
                  [&](const testkit::Section& section) { return section.title.text != kept; });
    file.header.items.clear();
    const InputFile input(test::write(directory_, "a.fld", file), Access::bulk);
    FLDGEO geo;
    LoadedSections loaded;
    // Behind identification, version, "HeaderDataEnd" and the opening title.
    EXPECT_EQ(fseeko(input.stream(), 108, SEEK_SET), 0);
    read_region_set(input.stream(), geo, loaded);
    return std::vector<bool>{loaded.surfaces, loaded.volumes, loaded.elements, loaded.materials};
  };
  EXPECT_EQ(loaded_from("LS_SurfaceGeometry"), (std::vector<bool>{true, false, false, false}));
  EXPECT_EQ(loaded_from("LS_VolumeGeometry"), (std::vector<bool>{false, true, false, false}));
  EXPECT_EQ(loaded_from("LS_Elements"), (std::vector<bool>{false, false, true, false}));
  EXPECT_EQ(loaded_from("LS_MatOfElements"), (std::vector<bool>{false, false, false, true}));
  EXPECT_EQ(loaded_from("LS_Nodes"), (std::vector<bool>{false, false, false, false}));
}

}  // namespace
}  // namespace fld
