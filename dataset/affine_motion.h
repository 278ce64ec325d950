// The coordinate transformations of motion actions, in double precision.
#pragma once

#include <array>

#include "format/ale.h"

namespace fld {

struct Point {
  double x, y, z;
};

// Three rows of three.
using Matrix = std::array<std::array<double, 3>, 3>;

// p + d.
struct Translation {
  explicit Translation(const ALE_ACT& act);
  Point operator()(Point p) const { return {p.x + d.x, p.y + d.y, p.z + d.z}; }
  Point d;
};

// (p - centre) * factors + centre.
struct Scaling {
  explicit Scaling(const ALE_ACT& act);
  Point operator()(Point p) const {
    return {(p.x - c.x) * f.x + c.x, (p.y - c.y) * f.y + c.y, (p.z - c.z) * f.z + c.z};
  }
  Point c, f;
};

// R (p - centre), right-handed about the axis. The centre is not added back, so a rotation about a point
// other than the origin also translates by -centre. An axis of length 0 is not normalised.
struct Rotation {
  explicit Rotation(const ALE_ACT& act);
  Point operator()(Point p) const;
  Point c;
  Matrix r;
};

// M p + t: maps four source points to four target points. Not valid if the source points are coplanar.
struct FourPoints {
  explicit FourPoints(const ALE_ACT& act);
  Point operator()(Point p) const;
  Matrix m;
  Point t;
  bool valid;
};

}  // namespace fld
