#include "page/scene.h"

#include "gtest/gtest.h"
#include <string>
#include <utility>
#include <vector>

#include "tests/page/unpacked.h"

namespace {

using nlohmann::json;
using page::Scene;
using page::Surface;
using page::SurfaceValues;

const page::Faces kTriangle = {.sizes = {3}, .corners = {0, 1, 2}, .elements = {1}, .nodes = {1, 2, 3}};

Surface triangle(float x = 0) {
  return {kTriangle, {x, 0, 0, x + 1, 0, 0, x, 1, 0}};
}

Surface stretched() {
  return {kTriangle, {0, 0, 0, 2, 0, 0, 0, 1, 0}};
}

// A scene of one part and one variable; per step the surface and the values, which may be empty.
Scene scene_of(std::vector<std::pair<Surface, std::vector<float>>> steps) {
  Scene scene(1, {});
  scene.set_part_count(1);
  for (auto& [surface, values] : steps) {
    scene.begin_step({{"step", scene.step_count()}});
    scene.set_surface(0, std::move(surface));
    if (!values.empty()) scene.set_values(0, 0, {false, {values}});
    scene.end_step();
  }
  return scene;
}

json part(const json& described, std::size_t step) {
  return described["steps"][step]["parts"][0];
}

json values(const json& described, std::size_t step) {
  return described["steps"][step]["values"][0][0];
}

TEST(PageScene, WritesWhatRestsOnce) {
  const Scene scene = scene_of({{triangle(), {1, 2, 3}}, {triangle(), {1, 2, 3}}, {triangle(), {1, 2, 4}}});
  const json described = scene.describe({0, 1, 2});
  EXPECT_EQ(part(described, 0), part(described, 2));
  EXPECT_EQ(values(described, 0), values(described, 1));
  EXPECT_NE(values(described, 0), values(described, 2));
}

TEST(PageScene, WritesARigidMotionAsAMatrix) {
  const json described = scene_of({{triangle(), {}}, {triangle(5), {}}}).describe({0, 1});
  EXPECT_EQ(part(described, 0)["points"], part(described, 1)["points"]);
  EXPECT_FALSE(part(described, 0).contains("matrix"));
  EXPECT_NEAR(part(described, 1)["matrix"][3].get<double>(), 5, 1e-6);
}

TEST(PageScene, WritesPointsThatMoveApartAgain) {
  const json described =
      scene_of({{triangle(), {}}, {stretched(), {}}, {stretched(), {}}}).describe({0, 1, 2});
  EXPECT_EQ(part(described, 0)["faces"], part(described, 1)["faces"]);
  EXPECT_NE(part(described, 0)["points"], part(described, 1)["points"]);
  EXPECT_EQ(part(described, 1), part(described, 2));
}

TEST(PageScene, TellsPartsAndValuesThatAreMissing) {
  const json described = scene_of({{triangle(), {1, 2, 3}}, {Surface(), {}}}).describe({0, 1});
  EXPECT_TRUE(part(described, 1).is_null());
  EXPECT_TRUE(values(described, 1).is_null());
}

TEST(PageScene, LeavesOutValuesOfAnotherCount) {
  EXPECT_TRUE(values(scene_of({{triangle(), {1, 2}}}).describe({0}), 0).is_null());
}

// The ranges of x, y and z, and that of the magnitude.
TEST(PageScene, TellsTheRangeOfTheMagnitude) {
  Scene scene(1, {});
  scene.set_part_count(1);
  scene.begin_step({});
  scene.set_surface(0, triangle());
  scene.set_values(0, 0, {false, {{3, 0, 0}, {4, 0, 1}, {0, 0, 0}}});
  scene.end_step();
  EXPECT_EQ(values(scene.describe({0}), 0)[3], json({0, 3, 0, 4, 0, 0, 0, 5}));
}

// The chunks of a step that is left out are gone, but for what later steps still use.
TEST(PageScene, KeepsOnlyTheDataOfItsSteps) {
  const Scene scene = scene_of({{triangle(), {1, 2, 3}}, {triangle(), {4, 5, 6}}});
  const auto chunks = [&](const std::vector<std::size_t>& steps) {
    std::vector<std::string> all;
    scene.each_packed(steps, [&](const std::string& packed) { all.push_back(packed); });
    return all;
  };
  EXPECT_EQ(chunks({0, 1}).size(), 3U);
  ASSERT_EQ(chunks({1}).size(), 2U);
  const json described = scene.describe({1});
  EXPECT_EQ(part(described, 0)["faces"][0], 0);
  EXPECT_EQ(values(described, 0)[0], 1);
  EXPECT_LT(scene.size_of({1}), scene.size_of({0, 1}));
  // Faces: 1 run of 1 triangle, 3 corners, 1 element, 3 nodes; then two bytes for each of the 9 coordinates.
  EXPECT_EQ(page_test::unpacked(chunks({1})[0]).size(), 3U + 3U + 1U + 3U + 18U);
  EXPECT_EQ(page_test::unpacked(chunks({1})[1]).size(), 6U);
}

}  // namespace
