// Rectangles of one colour beside the parts of a picture.
#pragma once

#include <vector>
#include <vtkRenderer.h>

#include "render/colour_map.h"
#include "render/layout.h"

namespace render {

// Fills the area with rectangles side by side from left to right, each of one colour.
void add_rectangles(vtkRenderer* renderer, const Area& area, const std::vector<Colour>& colours);

}  // namespace render
