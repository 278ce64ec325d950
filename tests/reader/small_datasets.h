// Meshes and files of a few nodes, with coordinates and values that encode the node's index.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "testkit/description.h"
#include "testkit/mesh.h"
#include "testkit/motion.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"

namespace reader_test {

// Nodes 0 .. count - 1, node i at (i, 10 i, -i), and nothing else.
testkit::Mesh numbered_nodes(int count);

// The same with one element, so that the mesh can be opened: the tetrahedron of the first four nodes,
// material 1.
testkit::Mesh numbered_mesh(int count);

// An element of any code over consecutive nodes from `first`.
void add_element(testkit::Mesh& mesh, std::int32_t code, std::int32_t first);

// The volume region `name` of these elements.
void add_volume(testkit::Mesh& mesh, const std::string& name, std::vector<std::int32_t> elements);

// A surface region with one triangle.
void add_triangle_surface(testkit::Mesh& mesh, const std::string& name,
                          const std::vector<std::int32_t>& corners);

// A scalar with the value `start` + i at node i; a vector with this as x, 100 more as y, 200 more as z.
testkit::Section numbered_scalar(const std::string& name, int count, double start = 0.0);
testkit::Section numbered_vector(const std::string& name, int count, double start = 0.0);

// A file of a series, without region sets yet.
testkit::File file_at(int cycle, double time = 0.0);

// A file of a series with these meshes, one region set each.
testkit::File file_at(int cycle, const std::vector<testkit::Mesh>& meshes);

// A motion of one region set from the geometry of the file with that cycle number.
testkit::Section motion_of(int base_cycle, std::vector<testkit::MovingRegion> regions);

}  // namespace reader_test
