// What the three coordinates of a part are called. A reader converts the parts of a mesh in cylindrical
// coordinates, all but the whole mesh, and does not tell which meshes those are: the files do.
#pragma once

#include <array>
#include <map>
#include <set>
#include <string>

#include "host/session.h"
#include "tool/vector_components.h"

namespace tool {

using AxisNames = std::array<const char*, 3>;

inline constexpr AxisNames kCylindricalAxes = {"r", "theta", "z"};

class CoordinateNames {
 public:
  // The names for a part of the session's step: x, y, z, or r, theta, z of the whole mesh of a region set in
  // cylindrical coordinates. A file that cannot be looked into counts as Cartesian.
  const AxisNames& of(const host::Session& session, const host::Part& part);

 private:
  const std::set<int>& cylindrical_sets(const std::string& file);

  std::map<std::string, std::set<int>> sets_;  // region sets in cylindrical coordinates, by file
};

}  // namespace tool
