#include "tests/tool/pictures.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <vector>

#include "testkit/quantity.h"
#include "testkit/small_meshes.h"

namespace tool_test {

void expect_near(const Pixel& found, const Pixel& wanted) {
  for (std::size_t i = 0; i < 3; ++i)
    EXPECT_NEAR(found[i], wanted[i], 6) << found[0] << " " << found[1] << " " << found[2];
}

testkit::File three_plates(double low, double high) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces.clear();
  testkit::Surface plates{.name = "plates"};
  std::vector<double> values(4, 0.0);
  const std::array<double, 3> plate_values = {low, high, 1.0e30};
  for (int i = 0; i < 3; ++i) {
    const double x = 10.0 + i;
    const std::int32_t first = mesh.nodes.add(x, 0, 0);
    mesh.nodes.add(x + 1, 0, 0);
    mesh.nodes.add(x + 1, 1, 0);
    mesh.nodes.add(x, 1, 0);
    plates.add(testkit::kQuadrilateralFace, {first, first + 1, first + 2, first + 3});
    values.insert(values.end(), 4, plate_values[static_cast<std::size_t>(i)]);
  }
  mesh.surfaces.push_back(plates);
  testkit::File file = testkit::file_of(mesh);
  testkit::RegionSet& set = file.region_sets.front();
  set.add(testkit::scalar_section({.name = "p", .label = "Pressure [Pa]", .values = values}));
  set.add(testkit::vector_section(
      {.name = "v", .label = "Velocity [m/s]", .x = values, .y = values, .z = values}));
  return file;
}

}  // namespace tool_test
