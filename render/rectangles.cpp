#include "render/rectangles.h"

#include <array>
#include <vtkActor2D.h>
#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkPolyDataMapper2D.h>
#include <vtkUnsignedCharArray.h>

#include "render/picture.h"

namespace render {

void add_rectangles(vtkRenderer* renderer, const Area& area, const std::vector<Colour>& colours) {
  vtkNew<vtkPoints> points;
  vtkNew<vtkCellArray> cells;
  vtkNew<vtkUnsignedCharArray> cell_colours;
  cell_colours->SetNumberOfComponents(3);
  const double width = area.width / static_cast<double>(colours.size());
  for (std::size_t i = 0; i < colours.size(); ++i) {
    const double left = area.left + static_cast<double>(i) * width;
    const vtkIdType first = points->GetNumberOfPoints();
    points->InsertNextPoint(kSupersampling * left, kSupersampling * area.bottom, 0);
    points->InsertNextPoint(kSupersampling * (left + width), kSupersampling * area.bottom, 0);
    points->InsertNextPoint(kSupersampling * (left + width), kSupersampling * area.top(), 0);
    points->InsertNextPoint(kSupersampling * left, kSupersampling * area.top(), 0);
    const std::array<vtkIdType, 4> corners = {first, first + 1, first + 2, first + 3};
    cells->InsertNextCell(4, corners.data());
    cell_colours->InsertNextTuple3(255 * colours[i][0], 255 * colours[i][1], 255 * colours[i][2]);
  }
  vtkNew<vtkPolyData> rectangles;
  rectangles->SetPoints(points);
  rectangles->SetPolys(cells);
  rectangles->GetCellData()->SetScalars(cell_colours);
  vtkNew<vtkPolyDataMapper2D> mapper;
  mapper->SetInputData(rectangles);
  vtkNew<vtkActor2D> actor;
  actor->SetMapper(mapper);
  renderer->AddActor2D(actor);
}

}  // namespace render
