// Dimensions of the stirred tank, in m.
#pragma once

namespace samples::tank {

inline constexpr double kTankRadius = 0.25;
inline constexpr double kTankHeight = 0.5;
inline constexpr double kZoneRadius = 0.125;  // the impeller's zone
inline constexpr double kZoneBottom = 0.12;
inline constexpr double kZoneTop = 0.24;
inline constexpr double kImpellerHeight = 0.18;  // z of the disc's middle
inline constexpr double kBladeTip = 0.0833;      // radius
inline constexpr double kShaftRadius = 0.0085;

}  // namespace samples::tank
