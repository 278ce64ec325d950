// The bar that tells what the colours mean, and the look of all texts.
#pragma once

#include <vtkLookupTable.h>
#include <vtkRenderer.h>
#include <vtkTextProperty.h>

#include "render/scene.h"

namespace render {

// Heights of letters, as fractions of the picture's height.
inline constexpr double kTitleSize = 0.026;
inline constexpr double kLabelSize = 0.022;
// How far the bar, with its title, reaches up from the lower edge.
inline constexpr double kBarTop = 0.16;

// The font, size and colour of a text in the picture.
void set_text(vtkTextProperty* property, const SceneOptions& options, double size);

// Adds the bar at the lower edge, with the scale's title above it.
void add_colour_bar(vtkRenderer* renderer, vtkLookupTable* colours, const SceneOptions& options);

}  // namespace render
