// Points and numbers as they are written on the command line: "0.1,0,-2e-3".
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "analysis/vec3.h"

namespace tool {

// A finite number; none if the text is something else.
std::optional<double> parse_real(std::string_view text);

// Three of them, with commas in between; blanks around them are fine.
std::optional<analysis::Vec3> parse_point(std::string_view text);

// The point that an option gives. Throws CommandError (wrong usage) with the option's name when it is none.
analysis::Vec3 point_of_option(const char* option, const std::string& text);

// Two points, with a colon in between. Throws like point_of_option.
struct PointPair {
  analysis::Vec3 first{};
  analysis::Vec3 second{};
};
PointPair points_of_option(const char* option, const std::string& text);

// How a point is written.
inline constexpr char kPointForm[] = "X,Y,Z";

}  // namespace tool
