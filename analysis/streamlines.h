// Streamlines: the lines that a vector field runs along.
#pragma once

#include <array>
#include <variant>
#include <vector>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>

namespace analysis {

struct SeedLine {
  std::array<double, 3> from{};
  std::array<double, 3> to{};
};

struct SeedSphere {
  std::array<double, 3> centre{};
  double radius = 0;
};

// Where streamlines begin.
using Seeds = std::variant<SeedLine, SeedSphere>;

// So many points: at equal distances on a line, or spread evenly through a sphere.
vtkSmartPointer<vtkPoints> seed_points(const Seeds& seeds, int count);

// One grid of several, whose cells have a point in common where theirs share a place, so that cells of two
// grids that touch are neighbours. It has the arrays that all of them have.
vtkSmartPointer<vtkUnstructuredGrid> joined(const std::vector<vtkSmartPointer<vtkUnstructuredGrid>>& grids);

// The lines through the seeds along the vectors of the grid's points, both ways, as polylines with the grid's
// scalars there, those of cells averaged. They end where the grid ends, where the vectors vanish or are
// undefined, and after ten times the grid's diagonal.
vtkSmartPointer<vtkPolyData> streamlines(vtkUnstructuredGrid* grid, vtkPoints* seeds);

// Lines as tubes of a radius.
vtkSmartPointer<vtkPolyData> tubes(vtkPolyData* lines, double radius);

}  // namespace analysis
