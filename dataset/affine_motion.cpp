#include "dataset/affine_motion.h"

#include <cmath>

namespace fld {

namespace {

// The point or vector in entries 3 * index to 3 * index + 2.
Point item(const ALE_ACT& act, size_t index) {
  return {act.data[3 * index], act.data[3 * index + 1], act.data[3 * index + 2]};
}

Point minus(Point a, Point b) {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}

Point times(const Matrix& m, Point p) {
  const auto row = [&](size_t i) { return m[i][0] * p.x + m[i][1] * p.y + m[i][2] * p.z; };
  return {row(0), row(1), row(2)};
}

Matrix from_columns(Point a, Point b, Point c) {
  return {{{a.x, b.x, c.x}, {a.y, b.y, c.y}, {a.z, b.z, c.z}}};
}

// Cofactor of row i, column j.
double cofactor(const Matrix& m, size_t i, size_t j) {
  const size_t i1 = (i + 1) % 3;
  const size_t i2 = (i + 2) % 3;
  const size_t j1 = (j + 1) % 3;
  const size_t j2 = (j + 2) % 3;
  return m[i1][j1] * m[i2][j2] - m[i1][j2] * m[i2][j1];
}

}  // namespace

Translation::Translation(const ALE_ACT& act) : d(item(act, 0)) {}

Scaling::Scaling(const ALE_ACT& act) : c(item(act, 0)), f(item(act, 1)) {}

Rotation::Rotation(const ALE_ACT& act) : c(item(act, 0)) {
  Point u = item(act, 1);
  const double length = std::sqrt(u.x * u.x + u.y * u.y + u.z * u.z);
  if (length > 0.0) u = {u.x / length, u.y / length, u.z / length};
  const double co = std::cos(act.data[6]);
  const double si = std::sin(act.data[6]);
  const double t = 1.0 - co;
  r = {{{u.x * u.x * t + co, u.x * u.y * t - u.z * si, u.x * u.z * t + u.y * si},
        {u.x * u.y * t + u.z * si, u.y * u.y * t + co, u.y * u.z * t - u.x * si},
        {u.x * u.z * t - u.y * si, u.y * u.z * t + u.x * si, u.z * u.z * t + co}}};
}

Point Rotation::operator()(Point p) const {
  return times(r, minus(p, c));
}

FourPoints::FourPoints(const ALE_ACT& act) : m{}, t{}, valid(false) {
  const auto edges = [&act](size_t first) {
    const Point origin = item(act, first);
    return from_columns(minus(item(act, first + 1), origin), minus(item(act, first + 2), origin),
                        minus(item(act, first + 3), origin));
  };
  const Matrix a = edges(0);
  const Matrix b = edges(4);
  const double determinant =
      a[0][0] * cofactor(a, 0, 0) + a[0][1] * cofactor(a, 0, 1) + a[0][2] * cofactor(a, 0, 2);
  if (determinant == 0.0) return;
  // M = B * inverse of A, whose row k, column j is the cofactor of row j, column k over the determinant.
  for (size_t i = 0; i < 3; ++i) {
    for (size_t j = 0; j < 3; ++j) {
      for (size_t k = 0; k < 3; ++k) m[i][j] += b[i][k] * (cofactor(a, j, k) / determinant);
    }
  }
  t = minus(item(act, 4), times(m, item(act, 0)));
  valid = true;
}

Point FourPoints::operator()(Point p) const {
  const Point moved = times(m, p);
  return {moved.x + t.x, moved.y + t.y, moved.z + t.z};
}

}  // namespace fld
