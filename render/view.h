// The direction that a picture is taken from.
#pragma once

#include <array>
#include <string_view>

namespace render {

using Direction = std::array<double, 3>;

// Two unit vectors at right angles.
struct View {
  Direction from{};  // from the parts to the eye
  Direction up{};    // upwards in the picture
};

// To the right in the picture.
Direction right_of(const View& view);

// "iso", the side that is seen ("+x", "-x", "+y", "-y", "+z", "-z"), or the eye's "AZIMUTH,ELEVATION" in
// degrees: the angle from +x towards +y, and the angle above the xy plane, from -90 to 90. Throws
// std::invalid_argument for anything else.
View parse_view(std::string_view text);

// The two numbers of "A,B". Throws std::invalid_argument for anything else.
std::array<double, 2> parse_pair(std::string_view text);

}  // namespace render
