// From where a picture is taken.
#pragma once

#include <array>
#include <string_view>

namespace render {

using Direction = std::array<double, 3>;

struct View {
  Direction from{};  // from the middle of what is shown towards the eye; of length 1
  Direction up{};    // what points upwards in the picture
};

// "iso", the side that is looked at ("+x", "-x", "+y", "-y", "+z", "-z"), or "AZIMUTH,ELEVATION" of the eye
// in degrees: the angle from +x towards +y and the angle above the xy plane. Throws std::invalid_argument for
// anything else.
View parse_view(std::string_view text);

// The two numbers of "A,B". Throws std::invalid_argument for anything else.
std::array<double, 2> parse_pair(std::string_view text);

}  // namespace render
