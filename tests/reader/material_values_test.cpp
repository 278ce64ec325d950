// The material number of each element, type by type.
#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

class MaterialValues : public LoadedReader {
 protected:
  static constexpr float kUndefined = -9.0F;
  static constexpr int kSurface = 1;
  static constexpr int kVolume = 2;
  static constexpr int kWholeMesh = 3;

  void SetUp() override {
    int request = 1;
    float undefined = kUndefined;
    api().get_extra_data(&request, nullptr, nullptr, nullptr, nullptr, &undefined);
  }

  // Two tetrahedra, a prism, a pyramid and a hexahedron; a surface with faces of five elements and of none.
  static testkit::Mesh mesh(std::vector<std::int32_t> materials) {
    testkit::Mesh mesh = numbered_nodes(8);
    for (const auto code : {testkit::kTetrahedron, testkit::kPrism, testkit::kTetrahedron, testkit::kPyramid,
                            testkit::kHexahedron}) {
      add_element(mesh, code, 0);
    }
    mesh.materials = std::move(materials);
    testkit::Surface surface{.name = "wall"};
    surface.add(testkit::kTriangleFace, {0, 1, 2}, 2);
    surface.add(testkit::kQuadrilateralFace, {0, 1, 2, 3}, 4);
    surface.add(testkit::kLineFace, {0, 1}, 1);
    surface.add(testkit::kTriangleFace, {0, 1, 3}, -1);
    surface.add(testkit::kTriangleFace, {0, 1, 4}, 0);
    surface.add(testkit::kQuadrilateralFace, {4, 5, 6, 7}, -1);
    mesh.surfaces = {surface};
    add_volume(mesh, "fluid", {4, 2, 1, 0});
    return mesh;
  }
  void open_with(std::vector<std::int32_t> materials) {
    write_and_open(testkit::file_of(mesh(std::move(materials))));
  }
};

TEST_F(MaterialValues, FacesHaveTheMaterialOfTheirElement) {
  open_with({10, 11, 12, 13, 14});
  EXPECT_EQ((Floats{12, kUndefined, 10}), host.materials(kSurface, 6));
  EXPECT_EQ((Floats{14, kUndefined}), host.materials(kSurface, 10));
}

TEST_F(MaterialValues, ElementsOfAVolumeFollowItsList) {
  open_with({10, 11, 12, 13, 14});
  EXPECT_EQ((Floats{12, 10}), host.materials(kVolume, 14));
  EXPECT_EQ((Floats{11}), host.materials(kVolume, 22));
  EXPECT_EQ((Floats{14}), host.materials(kVolume, 26));
  EXPECT_EQ(Floats{}, host.materials(kVolume, 18));
}

TEST_F(MaterialValues, ElementsOfTheWholeMeshFollowTheMesh) {
  open_with({10, 11, 12, 13, 14});
  EXPECT_EQ((Floats{10, 12}), host.materials(kWholeMesh, 14));
  EXPECT_EQ((Floats{13}), host.materials(kWholeMesh, 18));
  EXPECT_EQ((Floats{11}), host.materials(kWholeMesh, 22));
  EXPECT_EQ((Floats{14}), host.materials(kWholeMesh, 26));
}

TEST_F(MaterialValues, OtherElementTypesMatchNothing) {
  open_with({10, 11, 12, 13, 14});
  for (const int part : {kSurface, kVolume, kWholeMesh}) {
    for (int slot = -1; slot < 40; ++slot) {
      if (host.part(part).elements.contains(slot)) continue;
      EXPECT_EQ((Answer{1, {kUntouchedFloat}}), host.ask({.variable = 1, .part = part, .slot = slot}, 1))
          << slot;
    }
  }
}

TEST_F(MaterialValues, ComponentPlaysNoRole) {
  open_with({10, 11, 12, 13, 14});
  EXPECT_EQ((Answer{1, {14}}), host.ask({.variable = 1, .part = kVolume, .slot = 26, .component = 5}, 1));
}

TEST_F(MaterialValues, NegativeNumbersAreShiftedSoThatTheSmallestBecomes1) {
  open_with({-3, 0, 5, -3, 1});
  EXPECT_EQ((Floats{1, 9}), host.materials(kWholeMesh, 14));
  EXPECT_EQ((Floats{4}), host.materials(kWholeMesh, 22));
  EXPECT_EQ((Floats{1}), host.materials(kWholeMesh, 18));
  EXPECT_EQ((Floats{5}), host.materials(kWholeMesh, 26));
}

TEST_F(MaterialValues, NumbersFrom0To9999PassUnchanged) {
  open_with({0, 9999, 7, 7, 0});
  EXPECT_EQ((Floats{0, 7}), host.materials(kWholeMesh, 14));
  EXPECT_EQ((Floats{9999}), host.materials(kWholeMesh, 22));
}

TEST_F(MaterialValues, MissingMaterialsAreUndefined) {
  open_with({});
  EXPECT_EQ((Floats{kUndefined, kUndefined, kUndefined}), host.materials(kSurface, 6));
  EXPECT_EQ((Floats{kUndefined, kUndefined}), host.materials(kVolume, 14));
  EXPECT_EQ((Floats{kUndefined, kUndefined}), host.materials(kWholeMesh, 14));
}

TEST_F(MaterialValues, ListShorterThanTheElementsLeavesTheRestUndefined) {
  open_with({10, 11});
  EXPECT_EQ((Floats{kUndefined, kUndefined, 10}), host.materials(kSurface, 6));
  EXPECT_EQ((Floats{kUndefined, 10}), host.materials(kVolume, 14));
  EXPECT_EQ((Floats{11}), host.materials(kVolume, 22));
  EXPECT_EQ((Floats{10, kUndefined}), host.materials(kWholeMesh, 14));
  EXPECT_EQ((Floats{kUndefined}), host.materials(kWholeMesh, 26));
}

TEST_F(MaterialValues, ListLongerThanTheElementsIsNotFollowed) {
  open_with({10, 11, 12, 13, 14, 15, 16});
  EXPECT_EQ((Floats{10, 12}), host.materials(kWholeMesh, 14));
}

// Triangles and quadrilaterals have entries in the host's array, which must be written.
TEST_F(MaterialValues, FlatElementsOfAMeshAreUndefined) {
  testkit::Mesh flat = numbered_nodes(8);
  add_element(flat, testkit::kTetrahedron, 0);
  add_element(flat, testkit::kTriangle, 4);
  add_element(flat, testkit::kQuadrilateral, 4);
  flat.materials = {1, 2, 3};
  add_volume(flat, "shell", {2, 1});
  write_and_open(testkit::file_of(flat));
  for (const int part : {1, 2}) {
    EXPECT_EQ((Floats{kUndefined}), host.materials(part, 6));
    EXPECT_EQ((Floats{kUndefined}), host.materials(part, 10));
  }
  EXPECT_EQ((Floats{1}), host.materials(2, 14));
}

TEST_F(MaterialValues, TheyNeedNoFileOfTheCurrentStep) {
  open_with({10, 11, 12, 13, 14});
  select(2, 99);
  std::filesystem::remove(in("case.fld"));
  EXPECT_EQ("", stderr_of([&] { EXPECT_EQ((Floats{12, 10}), host.materials(kVolume, 14)); }));
}

TEST_F(MaterialValues, TheyFollowTheGeometryOfTheStep) {
  write(file_at(1, {mesh({10, 11, 12, 13, 14})}), "case_1.fld");
  write(file_at(2, {mesh({20, 21, 22, 23, 24})}), "case_2.fld");
  open(in("case_1.fld"));
  select(1, 1);
  EXPECT_EQ((Floats{22, 20}), host.materials(kVolume, 14));
  EXPECT_EQ((Floats{22, kUndefined, 20}), host.materials(kSurface, 6));
  select(2, 0);
  EXPECT_EQ((Floats{22, 20}), host.materials(kVolume, 14));
}

}  // namespace
}  // namespace reader_test
