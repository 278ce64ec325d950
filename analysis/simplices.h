// Elements cut into triangles or tetrahedra, as VTK's filters cut them: on these values are linear.
#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "analysis/vec3.h"

namespace analysis {

// Corners of a triangle (the last one is unused) or of a tetrahedron, as positions in the element's list.
using Simplex = std::array<int, 4>;

// A quadrilateral from its first corner: 0-1-2 and 0-2-3. One triangle of a triangle. `nodes` is 3 or 4.
std::span<const Simplex> triangles_of(int nodes);

// The tetrahedra of a solid element with these corners, in the host's order, given how many there are: 1 of a
// tetrahedron, 2 of a pyramid, whose base is cut along its shorter diagonal, 3 of a prism and 5 of a
// hexahedron.
std::span<const Simplex> tetrahedra_of(std::span<const Vec3> corners);

// Six times the volume, positive where corner 3 is on the side of the first three from which these turn
// counter-clockwise.
inline double six_volumes(const Vec3& a, const Vec3& b, const Vec3& c, const Vec3& d) {
  return dot(cross(b - a, c - a), d - a);
}

}  // namespace analysis
