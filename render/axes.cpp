#include "render/axes.h"

#include <cmath>
#include <vtkAxesActor.h>
#include <vtkCamera.h>
#include <vtkNew.h>

namespace render {
namespace {

// In units of the length of an axis.
constexpr double kNameDistance = 1.3;
constexpr double kHalfSide = 1.65;
// The name of an axis that points almost at the eye would hide the others' origin.
constexpr double kShortest = 0.25;

}  // namespace

vtkSmartPointer<vtkRenderer> add_axes(vtkRenderer* renderer, const View& view,
                                      const std::array<std::string, 3>& names, const Layout& layout,
                                      int width, int height, const TextStyle& style) {
  const Area& area = layout.axes;
  auto corner = vtkSmartPointer<vtkRenderer>::New();
  corner->SetViewport(area.left / width, area.bottom / height, area.right() / width, area.top() / height);
  corner->SetLayer(1);
  vtkNew<vtkAxesActor> axes;
  axes->AxisLabelsOff();
  axes->SetShaftTypeToCylinder();
  axes->SetCylinderRadius(0.03);
  axes->SetConeRadius(0.25);
  axes->SetNormalizedTipLength(0.25, 0.25, 0.25);
  axes->SetNormalizedShaftLength(0.75, 0.75, 0.75);
  corner->AddActor(axes);
  vtkCamera* camera = corner->GetActiveCamera();
  camera->SetFocalPoint(0, 0, 0);
  camera->SetPosition(view.from[0], view.from[1], view.from[2]);
  camera->SetViewUp(view.up[0], view.up[1], view.up[2]);
  camera->ParallelProjectionOn();
  corner->ResetCamera();
  camera->SetParallelScale(kHalfSide);

  const Direction right = right_of(view);
  const double unit = area.width / 2 / kHalfSide;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const double length = std::hypot(right[axis], view.up[axis]);
    if (length < kShortest) continue;
    // Names keep their distance from the tips of foreshortened axes too.
    const double distance = unit * (1 + (kNameDistance - 1) / length);
    add_text(
        renderer, {names[axis], layout.label_size}, style,
        {area.left + area.width / 2 + distance * right[axis],
         area.bottom + area.height / 2 + distance * view.up[axis] - 0.3 * layout.label_size, Anchor::centre});
  }
  return corner;
}

}  // namespace render
