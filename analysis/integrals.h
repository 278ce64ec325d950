// Integrals over the elements of a part: areas or volumes, integrals of values, flow rates, forces.
//
// Values per node are linear on the triangles and tetrahedra into which simplices.h cuts elements, and values
// per element constant. An element is left out of an integral when one of its values is undefined or NaN.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "analysis/vec3.h"
#include "host/session.h"

namespace analysis {

// A part's mesh at one step, in Cartesian coordinates.
struct PartMesh {
  host::Coordinates nodes;
  std::vector<host::ElementBlock> blocks;

  std::size_t element_count() const;
};

// Values in the order of the nodes, or of the elements through the blocks; host::kUndefinedValue where there
// is none.
struct Column {
  std::span<const float> values;
  host::Location location = host::Location::node;
};

// How much of a part an integral is over.
struct Coverage {
  double measure = 0;          // area or volume of the elements with values
  std::int64_t undefined = 0;  // values that are undefined or NaN
  std::int64_t left_out = 0;   // elements
};

struct Integral {
  Coverage over;
  double value = 0;

  // The mean weighted by area or volume; NaN when nothing has values.
  double mean() const { return value / over.measure; }
};

// Areas of faces or volumes of solid elements, whichever the part has.
double measure_of(const PartMesh& mesh);

// The integrals of scalars, each over the elements on which it has values.
std::vector<Integral> integrate(const PartMesh& mesh, std::span<const Column> columns);

// Per face, through the blocks: 1 where its normal is that of its corners (they turn counter-clockwise seen
// from where it points to), -1 where it is the opposite.
using Signs = std::span<const std::int8_t>;

// The sum of the faces' areas times their normals.
Vec3 vector_area(const PartMesh& mesh, Signs signs);

// The integral of a vector dot normal over faces.
Integral integrate_flow(const PartMesh& mesh, Signs signs, std::span<const Column, 3> vector);

struct PressureForce {
  Coverage over;
  Vec3 force{};
  Vec3 moment{};
};

// The force of a pressure, less the reference pressure, in the direction of the normals, and its moment about
// a point.
PressureForce integrate_pressure(const PartMesh& mesh, Signs signs, const Column& pressure,
                                 double reference_pressure, const Vec3& about);

}  // namespace analysis
