// The legend: a bar of the colours with ticks, and the scalar's title above it.
#pragma once

#include <string>
#include <vtkLookupTable.h>
#include <vtkRenderer.h>

#include "render/layout.h"
#include "render/text.h"

namespace render {

// Adds the legend of a colour map. With `has_undefined` it shows the colour of undefined values too.
void add_legend(vtkRenderer* renderer, vtkLookupTable* colours, const std::string& title, bool has_undefined,
                const Layout& layout, const TextStyle& style);

// Adds a text where the legend would be.
void add_note(vtkRenderer* renderer, const std::string& text, const Layout& layout, const TextStyle& style);

}  // namespace render
