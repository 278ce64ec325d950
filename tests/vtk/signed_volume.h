// The volume of a VTK cell, negative if it is inverted.
#pragma once

#include <array>
#include <cstddef>
#include <vtkCell.h>
#include <vtkPoints.h>

namespace vtk_test {

// From VTK's faces, which point outwards if the nodes are in VTK's order.
inline double signed_volume(vtkCell* cell) {
  double volume = 0;
  for (int f = 0; f < cell->GetNumberOfFaces(); ++f) {
    vtkPoints* corners = cell->GetFace(f)->GetPoints();
    std::array<double, 3> a{};
    std::array<double, 3> b{};
    std::array<double, 3> c{};
    corners->GetPoint(0, a.data());
    for (vtkIdType i = 1; i + 1 < corners->GetNumberOfPoints(); ++i) {
      corners->GetPoint(i, b.data());
      corners->GetPoint(i + 1, c.data());
      volume += a[0] * (b[1] * c[2] - b[2] * c[1]) - a[1] * (b[0] * c[2] - b[2] * c[0]) +
                a[2] * (b[0] * c[1] - b[1] * c[0]);
    }
  }
  return volume / 6;
}

}  // namespace vtk_test
