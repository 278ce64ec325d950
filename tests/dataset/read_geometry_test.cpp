// FLDFile::readGeometry: the geometry of a region set.
#include "dataset/type_counts.h"
#include "testkit/byte_sink.h"
#include "tests/dataset/dataset_test.h"

namespace fld {
namespace {

using Ints = std::vector<int>;
using Doubles = std::vector<double>;
using test::counts_of;
using test::Six;
using testkit::RegionForm;

class ReadGeometry : public testing::Test {
 protected:
  // Reads region set 0 of a valid file.
  void read(const testkit::File& file) {
    const std::string path = test::write(directory_, "a.fld", file);
    const auto [status, messages] = test::read_geometry(test::checked(path), 0, geo_);
    ASSERT_EQ(status, 0) << messages;
    ASSERT_EQ(messages, test::trace(path));
    EXPECT_FALSE(test::is_open(path));
  }

  // The geometry is that of every_shape().
  void expect_every_shape() const {
    ASSERT_EQ(geo_.surfaces.size(), 2U);
    const SurfaceGeometry& inlet = *geo_.surfaces[0];
    EXPECT_STREQ(inlet.name, "inlet");
    EXPECT_EQ(test::list(inlet.faceType, inlet.nface), (Ints{122, 133, 134}));
    EXPECT_EQ(test::list(inlet.faceLink, inlet.nface), (Ints{-1, 2, 5}));
    EXPECT_EQ(test::list(inlet.faceNode, inlet.nfaceNode), (Ints{0, 1, 0, 1, 2, 0, 1, 2, 3}));
    EXPECT_EQ(inlet.ntri, 1);
    EXPECT_EQ(inlet.nquad, 1);
    const SurfaceGeometry& wall = *geo_.surfaces[1];
    EXPECT_STREQ(wall.name, "wall");
    EXPECT_EQ(test::list(wall.faceType, wall.nface), Ints{133});
    EXPECT_EQ(test::list(wall.faceLink, wall.nface), Ints{4});
    EXPECT_EQ(test::list(wall.faceNode, wall.nfaceNode), (Ints{4, 5, 6}));
    EXPECT_EQ(wall.ntri, 1);
    EXPECT_EQ(wall.nquad, 0);
    ASSERT_EQ(geo_.volumes.size(), 2U);
    const VolumeGeometry& air = *geo_.volumes[0];
    EXPECT_STREQ(air.name, "air");
    EXPECT_EQ(test::list(air.elem, air.nelem), (Ints{0, 2, 6, 3}));
    EXPECT_EQ(counts_of(air), (Six{1, 0, 2, 1, 0, 0}));
    const VolumeGeometry& solid = *geo_.volumes[1];
    EXPECT_STREQ(solid.name, "solid");
    EXPECT_EQ(test::list(solid.elem, solid.nelem), (Ints{4, 5, 1}));
    EXPECT_EQ(counts_of(solid), (Six{0, 1, 0, 0, 1, 1}));
    ASSERT_TRUE(geo_.elements);
    const Elements& elements = *geo_.elements;
    EXPECT_EQ(test::list(elements.type, elements.nelem), (Ints{23, 24, 34, 35, 36, 38, 34}));
    EXPECT_EQ(test::list(elements.conn, elements.nconn),
              (Ints{0, 1, 2, 0, 1, 2, 3, 0, 1, 2, 4, 0, 1, 2, 3, 4, 0,
                    1, 2, 4, 5, 6, 0, 1, 2, 3, 4, 5, 6, 7, 1, 2, 3, 5}));
    EXPECT_EQ(counts_of(elements), (Six{1, 1, 2, 1, 1, 1}));
    ASSERT_TRUE(geo_.matOfElements);
    EXPECT_EQ(test::list(geo_.matOfElements->mat, geo_.matOfElements->nelem), (Ints{1, 1, 2, 2, 30, 30, 2}));
    EXPECT_EQ(geo_.materials, (Ints{1, 2, 30}));
    ASSERT_TRUE(geo_.nodes);
    EXPECT_EQ(test::list(geo_.nodes->x, geo_.nodes->nnode), (Doubles{0, 1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(test::list(geo_.nodes->y, geo_.nodes->nnode), (Doubles{10, 11, 12, 13, 14, 15, 16, 17}));
    EXPECT_EQ(test::list(geo_.nodes->z, geo_.nodes->nnode), (Doubles{20, 21, 22, 23, 24, 25, 26, 27}));
    EXPECT_EQ(geo_.coordinateSystem, 0);
    EXPECT_EQ(geo_.node_count(), 8);
    EXPECT_EQ(geo_.element_count(), 7);
    EXPECT_EQ(geo_.material_count(), 7);
  }

  testkit::TemporaryDirectory directory_;
  FLDGEO geo_;
};

TEST_F(ReadGeometry, HasEverythingOfTheFile) {
  read(testkit::file_of(test::every_shape()));
  expect_every_shape();
}

TEST_F(ReadGeometry, ArrayFormsGiveTheSame) {
  for (const auto& [surfaces, volumes] : {std::pair(RegionForm::kArray, RegionForm::kArray),
                                          std::pair(RegionForm::kArray, RegionForm::kPerRegion),
                                          std::pair(RegionForm::kPerRegion, RegionForm::kArray)}) {
    geo_ = FLDGEO();
    read(testkit::file_of(test::every_shape(), {.surface_form = surfaces, .volume_form = volumes}));
    expect_every_shape();
  }
}

TEST_F(ReadGeometry, NamesAreAsLongAsTheyAreWithoutTheirBlanks) {
  const std::string longest(300, 'n');
  testkit::Mesh mesh = test::every_shape();
  mesh.surfaces[0].name = " in let";
  mesh.surfaces[1].name = longest;
  for (const RegionForm form : {RegionForm::kPerRegion, RegionForm::kArray}) {
    read(testkit::file_of(mesh, {.surface_form = form, .volume_form = form, .name_length = 300}));
    EXPECT_STREQ(geo_.surfaces.at(0)->name, " in let");
    EXPECT_STREQ(geo_.surfaces.at(1)->name, longest.c_str());
    EXPECT_STREQ(geo_.volumes.at(0)->name, "air");
  }
}

TEST_F(ReadGeometry, RecordsMayBeCutAnywhere) {
  for (const int split : {1, 3, 4}) {
    for (const RegionForm form : {RegionForm::kPerRegion, RegionForm::kArray}) {
      testkit::File file = testkit::file_of(test::every_shape(), {.surface_form = form, .volume_form = form});
      file.split = split;
      geo_ = FLDGEO();
      read(file);
      expect_every_shape();
    }
  }
}

TEST_F(ReadGeometry, ConnectivityLengthMayBeOf4Bytes) {
  read(testkit::file_of(test::every_shape(), {.conn_length_width = 4}));
  expect_every_shape();
}

TEST_F(ReadGeometry, NumbersAreZeroBasedWhateverTheFilesBias) {
  for (const int bias : {1, 100, -100}) {
    testkit::File file = testkit::file_of(test::every_shape());
    file.header.set_bias(bias);
    geo_ = FLDGEO();
    read(file);
    expect_every_shape();
  }
}

TEST_F(ReadGeometry, NumbersStayWithABiasOf0) {
  testkit::File file = testkit::file_of(test::every_shape());
  file.header.set_bias(0);
  read(file);
  expect_every_shape();
}

TEST_F(ReadGeometry, BiasIsThatOfTheValidatedFile) {
  testkit::File file = testkit::file_of(test::every_shape());
  file.header.set_bias(1);
  const std::string path = test::write(directory_, "a.fld", file);
  FLDFile checked = test::checked(path);
  EXPECT_EQ(checked.m_bias, 1);
  checked.m_bias = 0;
  test::read_geometry(checked, 0, geo_);
  EXPECT_EQ(test::list(geo_.volumes.at(0)->elem, 4), (Ints{1, 3, 7, 4}));
}

TEST_F(ReadGeometry, SectionsMayStandInAnyOrder) {
  testkit::File file = testkit::file_of(test::every_shape());
  auto& sections = file.region_sets[0].sections;
  std::reverse(sections.begin(), sections.end());
  read(file);
  expect_every_shape();
}

TEST_F(ReadGeometry, OtherSectionsAreSteppedOver) {
  testkit::File file = testkit::file_of(test::every_shape());
  testkit::RegionSet set;
  set.add(testkit::scalar_section({.name = "P", .label = "", .values = {1.0, 2.0}}));
  set.add(testkit::vector_section({.name = "V", .label = "", .x = {1.0}, .y = {1.0}, .z = {1.0}}));
  set.add(testkit::motion_section(
      {.base_cycle = 0, .regions = {{.names = {"air"}, .actions = {testkit::Action::translate({})}}}}));
  // Here titles are compared in full.
  for (const char* title : {"LS_Nodes2", "LS_Element", "LS_MatOfElementsX", "LS_SurfaceGeometryArrays",
                            "ls_elements", "LS_VolumeGeometries", "OverlapEndNote", "Anything"}) {
    set.add(testkit::Section{.title = title, .blocks = {testkit::Block::integers({7, 7, 7})}});
  }
  auto& sections = file.region_sets[0].sections;
  for (size_t i = 0; i < set.sections.size(); ++i) {
    sections.insert(sections.begin() + static_cast<long>(2 * i % sections.size()), set.sections[i]);
  }
  read(file);
  expect_every_shape();
}

TEST_F(ReadGeometry, CoordinatesKeepThePrecisionOfEachAxis) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.nodes.x = {0.1, 0.2, 0.3, 0.4};
  mesh.nodes.y = mesh.nodes.x;
  mesh.nodes.precision = {testkit::Precision::kDouble, testkit::Precision::kSingle,
                          testkit::Precision::kSingle};
  read(testkit::file_of(mesh));
  EXPECT_EQ(geo_.nodes->x.precision, 8);
  EXPECT_EQ(geo_.nodes->y.precision, 4);
  EXPECT_EQ(geo_.nodes->z.precision, 4);
  EXPECT_EQ(vfpa2double(geo_.nodes->x, 0), 0.1);
  EXPECT_EQ(vfpa2double(geo_.nodes->y, 0), static_cast<double>(0.1F));
}

TEST_F(ReadGeometry, CoordinateSystemIsThatOfTheRegionSet) {
  for (const int system : {1, 0, 2}) {
    testkit::Mesh mesh = testkit::one_tetrahedron();
    mesh.coordinate_system = system;
    read(testkit::file_of(mesh));
    EXPECT_EQ(geo_.coordinateSystem, system);
  }
}

TEST_F(ReadGeometry, LaterSectionOfAKindReplacesTheEarlierOne) {
  testkit::Mesh first = testkit::one_tetrahedron();
  first.coordinate_system = 1;
  testkit::Mesh second = test::every_shape();
  second.coordinate_system = 0;
  for (const RegionForm form : {RegionForm::kPerRegion, RegionForm::kArray}) {
    testkit::File file = testkit::file_of(first);
    file.header.set_bias(1);
    file.region_sets[0].add(testkit::mesh_sections(second, {.surface_form = form, .volume_form = form}));
    geo_ = FLDGEO();
    read(file);
    expect_every_shape();
  }
}

TEST_F(ReadGeometry, FewerRegionsReplaceMore) {
  testkit::File file = testkit::file_of(test::every_shape());
  file.region_sets[0].add(testkit::surfaces_section({}));
  file.region_sets[0].add(testkit::volumes_section({{.name = "one", .elements = {5}}}, RegionForm::kArray));
  read(file);
  EXPECT_TRUE(geo_.surfaces.empty());
  ASSERT_EQ(geo_.volumes.size(), 1U);
  EXPECT_STREQ(geo_.volumes[0]->name, "one");
  EXPECT_EQ(counts_of(*geo_.volumes[0]), (Six{0, 0, 0, 0, 0, 1}));
}

TEST_F(ReadGeometry, MaterialsFrom0UpStay) {
  testkit::Mesh mesh = test::every_shape();
  mesh.materials = {7, 0, 0, 0, 9999, 0, 7};
  read(testkit::file_of(mesh));
  EXPECT_EQ(test::list(geo_.matOfElements->mat, 7), (Ints{7, 0, 0, 0, 9999, 0, 7}));
  EXPECT_EQ(geo_.materials, (Ints{0, 7, 9999}));
}

TEST_F(ReadGeometry, NegativeMaterialsAreShiftedTogetherWithTheOthers) {
  testkit::Mesh mesh = test::every_shape();
  mesh.materials = {-2, 0, 7, 0, -2, 7, 7};
  testkit::File file = testkit::file_of(mesh);
  file.header.set_bias(1);
  read(file);
  EXPECT_EQ(test::list(geo_.matOfElements->mat, 7), (Ints{1, 3, 10, 3, 1, 10, 10}));
  EXPECT_EQ(geo_.materials, (Ints{1, 3, 10}));
}

TEST_F(ReadGeometry, ListsTheMaterialsAnew) {
  geo_.materials = {1, 2, 3, 4, 5};
  read(testkit::file_of(testkit::one_tetrahedron()));
  EXPECT_EQ(geo_.materials, Ints{1});
}

TEST_F(ReadGeometry, RegionSetMayLackAnySection) {
  for (const char* missing :
       {"LS_SurfaceGeometry", "LS_VolumeGeometry", "LS_MatOfElements", "LS_Nodes", "LS_Elements"}) {
    testkit::Mesh mesh = test::every_shape();
    // Without nodes or elements nothing may refer to them.
    const bool without_elements = missing == std::string("LS_Elements");
    const bool without_nodes = missing == std::string("LS_Nodes");
    if (without_nodes) mesh.elements.conn = {};
    if (without_nodes) mesh.elements.type = Ints(7, 99);
    for (testkit::Surface& surface : mesh.surfaces) {
      if (without_elements) surface.link = Ints(surface.link.values().size(), -1);
      if (without_nodes) surface.type = Ints(surface.type.values().size(), 0);
      if (without_nodes) surface.node = {};
    }
    if (without_elements) mesh.volumes = {{.name = "air", .elements = {}}};
    testkit::File file = testkit::file_of(mesh);
    file.region_sets[0].remove(missing);
    geo_ = FLDGEO();
    SCOPED_TRACE(missing);
    read(file);
    EXPECT_EQ(geo_.surfaces.size(), missing == std::string("LS_SurfaceGeometry") ? 0U : 2U);
    EXPECT_EQ(geo_.volumes.empty(), missing == std::string("LS_VolumeGeometry"));
    EXPECT_EQ(static_cast<bool>(geo_.elements), !without_elements);
    EXPECT_EQ(static_cast<bool>(geo_.nodes), !without_nodes);
    EXPECT_EQ(static_cast<bool>(geo_.matOfElements), missing != std::string("LS_MatOfElements"));
    EXPECT_EQ(geo_.materials.empty(), missing == std::string("LS_MatOfElements"));
    EXPECT_EQ(geo_.element_count(), without_elements ? 0 : 7);
    EXPECT_EQ(geo_.node_count(), without_nodes ? 0 : 8);
  }
}

TEST_F(ReadGeometry, RegionSetWithoutSectionsIsEmpty) {
  testkit::File file;
  file.add_region_set();
  file.header.set_bias(1);
  read(file);
  EXPECT_TRUE(geo_.surfaces.empty());
  EXPECT_TRUE(geo_.volumes.empty());
  EXPECT_FALSE(geo_.elements);
  EXPECT_FALSE(geo_.matOfElements);
  EXPECT_FALSE(geo_.nodes);
  EXPECT_TRUE(geo_.materials.empty());
}

TEST_F(ReadGeometry, SectionsOfNothingGiveEmptyObjects) {
  for (const RegionForm form : {RegionForm::kPerRegion, RegionForm::kArray}) {
    testkit::File file;
    file.header.set_bias(1);
    testkit::RegionSet& set = file.add_region_set();
    testkit::Section surfaces = testkit::surfaces_section({}, form);
    testkit::Section volumes = testkit::volumes_section({}, form);
    // A section without regions may end after the length of the names.
    surfaces.blocks.resize(2);
    volumes.blocks.resize(2);
    set.add({surfaces, volumes, testkit::elements_section({}), testkit::materials_section({}),
             testkit::nodes_section({})});
    geo_ = FLDGEO();
    read(file);
    EXPECT_TRUE(geo_.surfaces.empty());
    EXPECT_TRUE(geo_.volumes.empty());
    ASSERT_TRUE(geo_.elements);
    EXPECT_EQ(geo_.elements->nconn, 0);
    EXPECT_EQ(geo_.element_count(), 0);
    EXPECT_EQ(geo_.material_count(), 0);
    EXPECT_EQ(geo_.node_count(), 0);
    EXPECT_TRUE(geo_.materials.empty());
  }
}

TEST_F(ReadGeometry, ArrayFormWithoutRegionsMayCarryItsEmptyBlocks) {
  testkit::File file = testkit::file_of(
      testkit::Mesh(), {.surface_form = RegionForm::kArray, .volume_form = RegionForm::kArray});
  ASSERT_EQ(file.region_sets[0].section("LS_SurfaceGeometryArray").blocks.size(), 8U);
  ASSERT_EQ(file.region_sets[0].section("LS_VolumeGeometryArray").blocks.size(), 5U);
  read(file);
  EXPECT_TRUE(geo_.surfaces.empty());
  EXPECT_TRUE(geo_.volumes.empty());
}

TEST_F(ReadGeometry, IndicesOutOfRangeAreNotCounted) {
  testkit::Mesh mesh = test::every_shape();
  mesh.volumes[0].elements = {2, 7, -1, 6, 1000000};
  mesh.surfaces[0].link = {-1, 2, 7};
  mesh.surfaces[1].node = {4, 5, 8};
  mesh.elements.conn.values()[0] = 99;
  testkit::File file = testkit::file_of(mesh);
  file.header.set_bias(1);
  const std::string path = test::write(directory_, "a.fld", file);
  const auto [status, messages] = test::read_geometry(test::checked(path), 0, geo_);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(messages, test::trace(path));  // bad indices are reported after all region sets were loaded
  const BadIndices bad = count_bad_indices(geo_);
  EXPECT_EQ(bad.element_nodes, 1);
  EXPECT_EQ(bad.face_nodes, 1);
  EXPECT_EQ(bad.face_elements, 1);
  EXPECT_EQ(bad.volume_elements, 3);
  EXPECT_EQ(counts_of(*geo_.volumes.at(0)), (Six{0, 0, 2, 0, 0, 0}));
  EXPECT_EQ(counts_of(*geo_.elements), (Six{1, 1, 2, 1, 1, 1}));
}

TEST_F(ReadGeometry, Element0OfAOneBasedFileIsOutsideTheElements) {
  testkit::File file = testkit::file_of(test::every_shape());
  file.header.set_bias(1);
  file.index_shift = 0;
  const std::string path = test::write(directory_, "a.fld", file);
  EXPECT_EQ(test::read_geometry(test::checked(path), 0, geo_).status, 0);
  EXPECT_EQ(test::list(geo_.volumes.at(0)->elem, 4), (Ints{-1, 1, 5, 2}));
  EXPECT_EQ(counts_of(*geo_.volumes[0]), (Six{0, 1, 1, 0, 0, 1}));
}

}  // namespace
}  // namespace fld
