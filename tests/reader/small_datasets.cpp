#include "tests/reader/small_datasets.h"

#include <numeric>

namespace reader_test {
namespace {

std::vector<double> counted_up(int count, double start) {
  std::vector<double> values(static_cast<std::size_t>(count));
  std::iota(values.begin(), values.end(), start);
  return values;
}

}  // namespace

testkit::Mesh numbered_nodes(int count) {
  testkit::Mesh mesh;
  for (int i = 0; i < count; ++i) mesh.nodes.add(i, 10.0 * i, -i);
  return mesh;
}

testkit::Mesh numbered_mesh(int count) {
  testkit::Mesh mesh = numbered_nodes(count);
  add_element(mesh, testkit::kTetrahedron, 0);
  mesh.materials = {1};
  return mesh;
}

void add_element(testkit::Mesh& mesh, std::int32_t code, std::int32_t first) {
  std::vector<std::int32_t> corners(static_cast<std::size_t>(testkit::corner_count(code)));
  std::iota(corners.begin(), corners.end(), first);
  mesh.elements.add(code, corners);
}

void add_volume(testkit::Mesh& mesh, const std::string& name, std::vector<std::int32_t> elements) {
  mesh.volumes.push_back({.name = name, .elements = std::move(elements)});
}

void add_triangle_surface(testkit::Mesh& mesh, const std::string& name,
                          const std::vector<std::int32_t>& corners) {
  testkit::Surface surface{.name = name};
  surface.add(testkit::kTriangleFace, corners);
  mesh.surfaces.push_back(surface);
}

testkit::Section numbered_scalar(const std::string& name, int count, double start) {
  return testkit::scalar_section({.name = name, .label = name, .values = counted_up(count, start)});
}

testkit::Section numbered_vector(const std::string& name, int count, double start) {
  return testkit::vector_section({.name = name,
                                  .label = name,
                                  .x = counted_up(count, start),
                                  .y = counted_up(count, start + 100.0),
                                  .z = counted_up(count, start + 200.0)});
}

testkit::File file_at(int cycle, double time) {
  testkit::File file;
  file.header.set_cycle(cycle, time);
  return file;
}

testkit::File file_at(int cycle, const std::vector<testkit::Mesh>& meshes) {
  testkit::File file = file_at(cycle);
  for (const auto& mesh : meshes) file.add_region_set().add(testkit::mesh_sections(mesh));
  return file;
}

testkit::Section motion_of(int base_cycle, std::vector<testkit::MovingRegion> regions) {
  return testkit::motion_section({.base_cycle = base_cycle, .regions = std::move(regions)});
}

}  // namespace reader_test
