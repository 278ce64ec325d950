// Which way faces point: away from the element that has them, whatever the order of their corners.
#include "analysis/face_directions.h"

#include "gtest/gtest.h"
#include <algorithm>
#include <vector>

#include "analysis/integrals.h"
#include "samples/sector.h"
#include "testkit/small_meshes.h"
#include "tests/analysis/part_mesh.h"

namespace {

using analysis::FaceDirections;
using analysis_test::is_never_cylindrical;
using analysis_test::mesh_of;
using Signs = std::vector<std::int8_t>;

FaceDirections directions(host_test::Reader& file, const char* surface,
                          const analysis::IsCylindrical& is_cylindrical = is_never_cylindrical) {
  const int part = file.part(surface);
  return analysis::find_face_directions(file.session(), {part}, is_cylindrical).at(part);
}

TEST(FaceDirections, FacesOutOfTheVolumeStay) {
  host_test::OpenFile file(testkit::file_of(testkit::one_of_each()));
  const FaceDirections found = directions(file, "outside");
  EXPECT_EQ(found.signs, Signs(12, 1));
  EXPECT_EQ(found.turned, 0);
  EXPECT_EQ(found.inside, 0);
  EXPECT_EQ(found.without_element, 0);
}

TEST(FaceDirections, FacesIntoTheVolumeAreTurned) {
  testkit::Mesh mesh = testkit::one_of_each();
  testkit::Surface inwards{.name = "inwards"};
  inwards.add(testkit::kQuadrilateralFace, {0, 1, 2, 3});  // the cube's bottom, seen from inside
  inwards.add(testkit::kQuadrilateralFace, {0, 3, 2, 1});
  inwards.add(testkit::kTriangleFace, {1, 2, 8});  // the prism's
  mesh.surfaces.push_back(inwards);
  host_test::OpenFile file(testkit::file_of(mesh));
  const FaceDirections found = directions(file, "inwards");
  EXPECT_EQ(found.signs, (Signs{1, -1, 1}));  // triangles come first
  EXPECT_EQ(found.turned, 1);
  const analysis::Vec3 area =
      analysis::vector_area(mesh_of(file.session(), file.part("inwards")), found.signs);
  EXPECT_DOUBLE_EQ(area[2], -2.5);
}

TEST(FaceDirections, FacesBetweenElementsStay) {
  host_test::OpenFile file(testkit::file_of(testkit::one_of_each()));
  const FaceDirections found = directions(file, "@between");
  EXPECT_EQ(found.signs, Signs{1});
  EXPECT_EQ(found.inside, 1);
}

TEST(FaceDirections, FacesOfNoElementStay) {
  testkit::Mesh mesh = testkit::one_of_each();
  testkit::Surface loose{.name = "loose"};
  loose.add(testkit::kTriangleFace, {0, 8, 10});
  mesh.surfaces.push_back(loose);
  host_test::OpenFile file(testkit::file_of(mesh));
  const FaceDirections found = directions(file, "loose");
  EXPECT_EQ(found.signs, Signs{1});
  EXPECT_EQ(found.without_element, 1);
  EXPECT_EQ(found.turned, 0);
}

TEST(FaceDirections, ManySurfacesAtOnceMayHaveTheSameFaces) {
  host_test::OpenFile file(testkit::file_of(testkit::one_of_each()));
  const std::vector<int> both = {file.part("@between"), file.part("outside")};
  const auto found = analysis::find_face_directions(file.session(), both, is_never_cylindrical);
  EXPECT_EQ(found.at(both[0]).inside, 1);
  EXPECT_EQ(found.at(both[1]).signs, Signs(12, 1));
}

TEST(FaceDirections, OfACylindricalMesh) {
  testkit::Mesh mesh = samples::sector::mesh();
  host_test::OpenFile file(testkit::file_of(mesh));
  for (const char* name : {"hub", "casing", "inlet", "outlet", "periodic_low"}) {
    const FaceDirections found = directions(file, name, analysis_test::is_whole);
    EXPECT_EQ(found.without_element, 0) << name;
    EXPECT_EQ(found.turned, 0) << name;
    EXPECT_FALSE(found.signs.empty()) << name;
  }
}

}  // namespace
