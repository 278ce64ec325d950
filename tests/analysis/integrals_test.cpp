// Integrals over small meshes, whose values are known from geometry.
#include "analysis/integrals.h"

#include "gtest/gtest.h"
#include <array>
#include <cmath>
#include <limits>
#include <vector>
#include <vtkHexahedron.h>
#include <vtkIdList.h>
#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkPyramid.h>
#include <vtkWedge.h>

#include "analysis/simplices.h"
#include "host/undefined_value.h"
#include "testkit/small_meshes.h"
#include "tests/analysis/part_mesh.h"

namespace {

using analysis::Column;
using analysis::Vec3;
using analysis_test::at_nodes;
using analysis_test::mesh_of;

// The corners that VTK gives for the tetrahedra of a cell.
std::vector<vtkIdType> cut_by_vtk(vtkCell& cell, const std::vector<Vec3>& corners) {
  for (std::size_t i = 0; i < corners.size(); ++i) {
    cell.GetPoints()->SetPoint(static_cast<vtkIdType>(i), corners[i].data());
    cell.GetPointIds()->SetId(static_cast<vtkIdType>(i), static_cast<vtkIdType>(i));
  }
  vtkNew<vtkIdList> ids;
  vtkNew<vtkPoints> points;
  cell.Triangulate(1, ids, points);
  return {ids->begin(), ids->end()};
}

std::vector<vtkIdType> cut_by_us(const std::vector<Vec3>& corners) {
  std::vector<vtkIdType> ids;
  for (const analysis::Simplex& simplex : analysis::tetrahedra_of(corners))
    ids.insert(ids.end(), simplex.begin(), simplex.end());
  return ids;
}

TEST(Simplices, AreThoseOfVtk) {
  const std::vector<Vec3> cube = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                                  {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};
  EXPECT_EQ(cut_by_us(cube), cut_by_vtk(*vtkNew<vtkHexahedron>(), cube));
  const auto pyramid = [](double far) {
    return std::vector<Vec3>{{0, 0, 0}, {1, 0, 0}, {far, far, 0}, {0, 1, 0}, {0.5, 0.5, 1}};
  };
  for (const double far : {1.0, 1.1})
    EXPECT_EQ(cut_by_us(pyramid(far)), cut_by_vtk(*vtkNew<vtkPyramid>(), pyramid(far)));
  // Along the shorter diagonal, which VTK 9.2 takes too and VTK 9.3 does not.
  EXPECT_EQ(cut_by_us(pyramid(0.9)), (std::vector<vtkIdType>{0, 1, 2, 4, 0, 2, 3, 4}));
  // VTK's prism has the triangles the other way round.
  constexpr std::array<std::size_t, 6> kHostCorners = {0, 2, 1, 3, 5, 4};
  const std::vector<Vec3> prism = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}};
  std::vector<Vec3> of_vtk;
  for (const std::size_t corner : kHostCorners) of_vtk.push_back(prism[corner]);
  std::vector<vtkIdType> expected;
  for (const vtkIdType id : cut_by_vtk(*vtkNew<vtkWedge>(), of_vtk))
    expected.push_back(static_cast<vtkIdType>(kHostCorners[static_cast<std::size_t>(id)]));
  EXPECT_EQ(cut_by_us(prism), expected);
}

class Integrals : public testing::Test {
 protected:
  Integrals() : file_(testkit::file_of(testkit::one_of_each())) {}

  analysis::PartMesh part(const char* name) { return mesh_of(file_.session(), file_.part(name)); }

  host_test::OpenFile file_;
};

TEST_F(Integrals, VolumesAndAreas) {
  EXPECT_DOUBLE_EQ(analysis::measure_of(part("ALL_ELEMENTS")), 2);  // 1 + 1/2 + 1/3 + 1/6
  EXPECT_DOUBLE_EQ(analysis::measure_of(part("lower")), 1.5);
  EXPECT_DOUBLE_EQ(analysis::measure_of(part("upper")), 0.5);
  EXPECT_DOUBLE_EQ(analysis::measure_of(part("@between")), 1);
  const analysis::PartMesh outside = part("outside");
  const std::vector<std::int8_t> signs(outside.element_count(), 1);
  EXPECT_LT(analysis::length(analysis::vector_area(outside, signs)), 1e-15);
}

// A linear function has its mean at the centre of each element.
TEST_F(Integrals, OfALinearScalar) {
  const analysis::PartMesh mesh = part("ALL_ELEMENTS");
  const std::vector<float> p =
      at_nodes(mesh, [](double x, double y, double z) { return 1 + 2 * x + 4 * y + 8 * z; });
  const std::vector<Column> columns = {{p}};
  const auto found = analysis::integrate(mesh, columns);
  ASSERT_EQ(found.size(), 1U);
  // x: 1/2, 4/3, 1/2, (1+2+1+0.5)/4; y: 1/2 throughout but the prism and tetrahedron, also 1/2; z: 1/2, 1/2,
  // 5/4, (1+1+1+2)/4.
  const double x = 0.5 * 1 + 4.0 / 3 * 0.5 + 0.5 / 3 + 1.125 / 6;
  const double y = 0.5 * 2;
  const double z = 0.5 * 1.5 + 1.25 / 3 + 1.25 / 6;
  EXPECT_NEAR(found[0].value, 2 + 2 * x + 4 * y + 8 * z, 1e-6);
  EXPECT_DOUBLE_EQ(found[0].over.measure, 2);
  EXPECT_NEAR(found[0].mean(), found[0].value / 2, 1e-15);
}

TEST_F(Integrals, ElementsWithoutAValueAreLeftOut) {
  const analysis::PartMesh mesh = part("ALL_ELEMENTS");
  std::vector<float> p = at_nodes(mesh, [](double, double, double) { return 3; });
  p[0] = host::kUndefinedValue;  // of the hexahedron alone
  p[8] = std::nanf("");          // an edge of the prism alone
  const std::vector<float> material = {5, 7, host::kUndefinedValue, 7};
  const std::vector<Column> columns = {{p}, {material, host::Location::element}};
  const auto found = analysis::integrate(mesh, columns);
  EXPECT_EQ(found[0].over.undefined, 2);
  EXPECT_EQ(found[0].over.left_out, 2);
  EXPECT_DOUBLE_EQ(found[0].over.measure, 0.5);
  EXPECT_DOUBLE_EQ(found[0].mean(), 3);
  EXPECT_EQ(found[1].over.undefined, 1);
  EXPECT_EQ(found[1].over.left_out, 1);
}

// Gauss: the flow out of a closed surface is the integral of the divergence.
TEST_F(Integrals, FlowThroughAClosedSurface) {
  const analysis::PartMesh mesh = part("outside");
  const std::vector<std::int8_t> signs(mesh.element_count(), 1);
  const auto flow = [&](auto fx, auto fy, auto fz) {
    const std::vector<float> x = at_nodes(mesh, fx);
    const std::vector<float> y = at_nodes(mesh, fy);
    const std::vector<float> z = at_nodes(mesh, fz);
    const std::array<Column, 3> vector = {{{x}, {y}, {z}}};
    return analysis::integrate_flow(mesh, signs, vector);
  };
  const auto one = [](double, double, double) { return 1.0; };
  EXPECT_NEAR(flow(one, one, one).value, 0, 1e-12);
  // Of (3x, 2y + z, x - 4z) it is 1, times the volume.
  const analysis::Integral found = flow([](double x, double, double) { return 3 * x; },
                                        [](double, double y, double z) { return 2 * y + z; },
                                        [](double x, double, double z) { return x - 4 * z; });
  EXPECT_NEAR(found.value, 2, 1e-12);
  EXPECT_DOUBLE_EQ(found.over.measure, analysis::measure_of(mesh));
  const std::vector<float> x = at_nodes(mesh, one);
  std::vector<float> y = x;
  y[0] = host::kUndefinedValue;  // of three faces of the hexahedron, of which none is inside
  const std::array<Column, 3> vector = {{{x}, {y}, {x}}};
  const analysis::Integral partial = analysis::integrate_flow(mesh, signs, vector);
  EXPECT_EQ(partial.over.undefined, 1);
  EXPECT_EQ(partial.over.left_out, 3);
  EXPECT_DOUBLE_EQ(partial.over.measure, analysis::measure_of(mesh) - 3);
}

TEST_F(Integrals, ForceAndMomentOfAPressure) {
  const analysis::PartMesh mesh = part("outside");
  std::vector<std::int8_t> signs(mesh.element_count(), 1);
  const std::vector<float> constant = at_nodes(mesh, [](double, double, double) { return 101325; });
  const analysis::PressureForce none = analysis::integrate_pressure(mesh, signs, {constant}, 0, {5, -3, 2});
  EXPECT_LT(analysis::length(none.force), 1e-9);
  EXPECT_LT(analysis::length(none.moment), 1e-8);

  // Of p = 7 + z: the volume 2, at its centre.
  const std::vector<float> rising = at_nodes(mesh, [](double, double, double z) { return 7 + z; });
  const analysis::PressureForce buoyant = analysis::integrate_pressure(mesh, signs, {rising}, 5, {0, 0, 0});
  EXPECT_NEAR(buoyant.force[0], 0, 1e-12);
  EXPECT_NEAR(buoyant.force[1], 0, 1e-12);
  EXPECT_NEAR(buoyant.force[2], 2, 1e-12);
  const double x = 0.5 * 1 + 4.0 / 3 * 0.5 + 0.5 / 3 + 1.125 / 6;  // times the volume
  EXPECT_NEAR(buoyant.moment[0], 1, 1e-12);
  EXPECT_NEAR(buoyant.moment[1], -x, 1e-12);
  EXPECT_NEAR(buoyant.moment[2], 0, 1e-12);

  for (std::int8_t& sign : signs) sign = -1;
  EXPECT_NEAR(analysis::integrate_pressure(mesh, signs, {rising}, 5, {0, 0, 0}).force[2], -2, 1e-12);
}

// A reference pressure is the same as that much less pressure.
TEST_F(Integrals, ReferencePressureOfOneFace) {
  const analysis::PartMesh mesh = part("@between");
  const std::vector<std::int8_t> signs = {1};
  const std::vector<float> p = at_nodes(mesh, [](double, double, double) { return 10; });
  const analysis::PressureForce found = analysis::integrate_pressure(mesh, signs, {p}, 4, {1, 0, 0.5});
  EXPECT_DOUBLE_EQ(found.force[0], 6);
  EXPECT_DOUBLE_EQ(found.force[1], 0);
  EXPECT_DOUBLE_EQ(found.force[2], 0);
  // At half the height of the face, y = 1/2 from the point.
  EXPECT_DOUBLE_EQ(found.moment[0], 0);
  EXPECT_DOUBLE_EQ(found.moment[1], 0);
  EXPECT_DOUBLE_EQ(found.moment[2], -3);
}

}  // namespace
