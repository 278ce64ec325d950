// Colours and colour maps.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>
#include <vtkLookupTable.h>
#include <vtkSmartPointer.h>

namespace render {

using Colour = std::array<double, 3>;  // red, green, blue from 0 to 1

// For undefined values.
inline constexpr Colour kUndefinedColour = {0.62, 0.60, 0.60};

// "#rrggbb", or black, grey or white. Throws std::invalid_argument for anything else.
Colour parse_colour(std::string_view text);

// The default comes first.
const std::vector<std::string>& colour_map_names();

// 256 colours from `low` to `high`. Values out of range get the colour of the nearer end, NaN gets
// kUndefinedColour. `name` is one of colour_map_names().
vtkSmartPointer<vtkLookupTable> make_colour_map(std::string_view name, double low, double high);

}  // namespace render
