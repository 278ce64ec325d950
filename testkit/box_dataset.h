// Datasets of any size over a box, for benchmarks and tests. Values are computed while they are written, so
// memory does not depend on the number of cells.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>

#include "testkit/description.h"
#include "testkit/file_writer.h"
#include "testkit/mesh.h"

namespace testkit {

// The elements of a cell. kMixed has, along x, two fifths hexahedra, two fifths prisms, a layer of pyramids
// (with some tetrahedra), and then tetrahedra; it needs at least 5 cells along x.
enum class BoxShape { kHexahedra, kPrisms, kPyramids, kTetrahedra, kMixed };

struct BoxOptions {
  std::int32_t nx = 1, ny = 1, nz = 1;  // cells along x, y, z; the elements follow x, then y, then z
  BoxShape shape = BoxShape::kHexahedra;
  std::array<double, 3> lengths{1.0, 1.0, 1.0};  // the box reaches from (0, 0, 0) to here
  std::int32_t volumes = 1;    // number of regions "volume_1" ...: stretches of the rows of cells along x
  std::int32_t materials = 1;  // number of materials 1, 2, ..., likewise
  std::int32_t scalars = 2;    // "scalar_1" ...
  std::int32_t vectors = 1;    // "vector_1" ...
  Precision coordinates = Precision::kSingle;
  Precision values = Precision::kSingle;
  Layout layout{};
  std::int64_t split = 0;
  std::int32_t bias = 0;
  std::int32_t cycle = 0;
  double time = 0.0;
};

struct BoxCounts {
  std::int64_t nodes = 0;
  std::int64_t elements = 0;
  std::int64_t conn = 0;
};
BoxCounts box_counts(const BoxOptions& options);

// The description of the dataset, with functions for its large arrays. Surfaces "x_low", "x_high", "y_low",
// "y_high", "z_low", "z_high", linked to the elements. Throws std::invalid_argument for counts below 1 or
// beyond 32 bits.
File box_file(const BoxOptions& options);
Places write_box_dataset(const std::filesystem::path& path, const BoxOptions& options);

// The quantities, by number from 1 and component 0 to 2, at a node.
double box_scalar(std::int32_t number, double x, double y, double z);
double box_vector(std::int32_t number, int component, double x, double y, double z);

}  // namespace testkit
