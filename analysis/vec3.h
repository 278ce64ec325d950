// Points and directions.
#pragma once

#include <array>
#include <cmath>

namespace analysis {

// A type of its own, so that its operators are found everywhere.
struct Vec3 : std::array<double, 3> {};

inline Vec3 operator+(const Vec3& a, const Vec3& b) {
  return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}
inline Vec3 operator-(const Vec3& a, const Vec3& b) {
  return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
inline Vec3 operator*(double factor, const Vec3& a) {
  return {factor * a[0], factor * a[1], factor * a[2]};
}
inline Vec3& operator+=(Vec3& a, const Vec3& b) {
  return a = a + b;
}
inline double dot(const Vec3& a, const Vec3& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
inline Vec3 cross(const Vec3& a, const Vec3& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
inline double length(const Vec3& a) {
  return std::sqrt(dot(a, a));
}

}  // namespace analysis
