#include "analysis/box_elements.h"

#include <algorithm>
#include <vtkBox.h>
#include <vtkExtractGeometry.h>
#include <vtkNew.h>

namespace analysis {

vtkSmartPointer<vtkUnstructuredGrid> elements_in_box(vtkUnstructuredGrid* grid, const Vec3& corner,
                                                     const Vec3& opposite) {
  vtkNew<vtkBox> box;
  box->SetXMin(std::min(corner[0], opposite[0]), std::min(corner[1], opposite[1]),
               std::min(corner[2], opposite[2]));
  box->SetXMax(std::max(corner[0], opposite[0]), std::max(corner[1], opposite[1]),
               std::max(corner[2], opposite[2]));
  vtkNew<vtkExtractGeometry> filter;
  filter->SetInputData(grid);
  filter->SetImplicitFunction(box);
  filter->ExtractInsideOn();
  filter->ExtractBoundaryCellsOn();
  filter->Update();
  return filter->GetOutput();
}

}  // namespace analysis
