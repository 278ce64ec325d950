#include "render/camera.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vtkCamera.h>

namespace render {
namespace {

constexpr int kToTheRight = 0;
constexpr int kUpwards = 1;
constexpr int kTowardsTheEye = 2;

double dot(const Direction& a, const Direction& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

}  // namespace

Extent::Extent(const View& view) : axes_{right_of(view), view.up, view.from} {
  low_.fill(std::numeric_limits<double>::infinity());
  high_.fill(-std::numeric_limits<double>::infinity());
}

void Extent::add(vtkPoints* points) {
  Direction point{};
  for (vtkIdType i = 0; i < points->GetNumberOfPoints(); ++i) {
    points->GetPoint(i, point.data());
    if (!std::isfinite(point[0] + point[1] + point[2])) continue;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const double along = dot(point, axes_[axis]);
      low_[axis] = std::min(low_[axis], along);
      high_[axis] = std::max(high_[axis], along);
    }
  }
}

Direction Extent::middle() const {
  Direction middle{};
  if (is_empty()) return middle;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const double along = (low_[axis] + high_[axis]) / 2;
    for (std::size_t i = 0; i < 3; ++i) middle[i] += along * axes_[axis][i];
  }
  return middle;
}

void aim_camera(vtkRenderer* renderer, const View& view, const Extent& extent, const Area& area, int width,
                int height, double zoom) {
  vtkCamera* camera = renderer->GetActiveCamera();
  const Direction middle = extent.middle();
  const bool is_empty = extent.is_empty();
  const double depth = is_empty ? 0 : extent.length(kTowardsTheEye);
  const double half_height = is_empty ? 0 : extent.length(kUpwards) / 2 * height / area.height;
  const double half_width = is_empty ? 0 : extent.length(kToTheRight) / 2 * height / area.width;
  const double scale = std::max(half_height, half_width);
  const double distance = scale + depth > 0 ? scale + depth : 1;
  camera->SetFocalPoint(middle[0], middle[1], middle[2]);
  camera->SetPosition(middle[0] + distance * view.from[0], middle[1] + distance * view.from[1],
                      middle[2] + distance * view.from[2]);
  camera->SetViewUp(view.up[0], view.up[1], view.up[2]);
  camera->ParallelProjectionOn();
  camera->SetParallelScale((scale > 0 ? scale : 1) / zoom);
  camera->SetWindowCenter(1 - (2 * area.left + area.width) / width,
                          1 - (2 * area.bottom + area.height) / height);
  renderer->ResetCameraClippingRange();
}

}  // namespace render
