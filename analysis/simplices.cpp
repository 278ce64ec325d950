#include "analysis/simplices.h"

namespace analysis {
namespace {

constexpr std::array<Simplex, 2> kTriangles = {{{0, 1, 2, -1}, {0, 2, 3, -1}}};

constexpr std::array<Simplex, 1> kTetrahedron = {{{0, 1, 2, 3}}};
constexpr std::array<Simplex, 2> kPyramid02 = {{{0, 1, 2, 4}, {0, 2, 3, 4}}};
constexpr std::array<Simplex, 2> kPyramid13 = {{{0, 1, 3, 4}, {1, 2, 3, 4}}};
constexpr std::array<Simplex, 3> kPrism = {{{0, 1, 2, 3}, {2, 3, 4, 5}, {2, 1, 4, 3}}};
constexpr std::array<Simplex, 5> kHexahedron = {
    {{0, 1, 3, 4}, {1, 4, 5, 6}, {1, 4, 6, 3}, {1, 3, 6, 2}, {3, 6, 7, 4}}};

double squared_distance(const Vec3& a, const Vec3& b) {
  return dot(b - a, b - a);
}

}  // namespace

std::span<const Simplex> triangles_of(int nodes) {
  return std::span(kTriangles).first(nodes == 3 ? 1 : 2);
}

std::span<const Simplex> tetrahedra_of(std::span<const Vec3> corners) {
  switch (corners.size()) {
    case 4:
      return kTetrahedron;
    case 5:
      if (squared_distance(corners[0], corners[2]) < squared_distance(corners[1], corners[3]))
        return kPyramid02;
      return kPyramid13;
    case 6:
      return kPrism;
    default:
      return kHexahedron;
  }
}

}  // namespace analysis
