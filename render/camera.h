// The camera: where it looks from, and how large the parts appear.
#pragma once

#include <array>
#include <vtkPoints.h>
#include <vtkRenderer.h>

#include "render/layout.h"
#include "render/view.h"

namespace render {

// How far something reaches along the directions of a view: to the right in the picture, upwards, and towards
// the eye.
class Extent {
 public:
  explicit Extent(const View& view);

  // Points with a coordinate that is no number do not count.
  void add(vtkPoints* points);

  bool is_empty() const { return low_[0] > high_[0]; }
  double length(int axis) const {
    return high_[static_cast<std::size_t>(axis)] - low_[static_cast<std::size_t>(axis)];
  }
  // The middle, in the coordinates of the points.
  Direction middle() const;

 private:
  std::array<Direction, 3> axes_;
  std::array<double, 3> low_;
  std::array<double, 3> high_;
};

// Turns the renderer's camera, without perspective, to what has this extent, so that it is `zoom` times as
// large as what just fits into the area of a picture of `width` x `height` pixels.
void aim_camera(vtkRenderer* renderer, const View& view, const Extent& extent, const Area& area, int width,
                int height, double zoom = 1);

}  // namespace render
