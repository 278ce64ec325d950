// Small axes in a corner of the picture that turn with the view.
#pragma once

#include <array>
#include <string>
#include <vtkRenderer.h>
#include <vtkSmartPointer.h>

#include "render/layout.h"
#include "render/text.h"
#include "render/view.h"

namespace render {

// Adds the axes' names to `renderer`, which covers a picture of `width` x `height` pixels. Returns a renderer
// that draws the axes themselves.
vtkSmartPointer<vtkRenderer> add_axes(vtkRenderer* renderer, const View& view,
                                      const std::array<std::string, 3>& names, const Layout& layout,
                                      int width, int height, const TextStyle& style);

}  // namespace render
