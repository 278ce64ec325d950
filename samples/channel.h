// Steady flow through a channel past a hot cylinder that stands across it: tetrahedra around the cylinder,
// hexahedra and prisms elsewhere, pyramids in between. One file in single precision.
//
// The channel reaches from x = -0.6 to 1.8 m, y = -0.4 to 0.4 m, z = 0 to 0.32 m; the cylinder's axis is that
// of z. Surfaces inlet, outlet, floor, ceiling, sides, obstacle, "&VFG_walls" (the last four once more) and
// "@wake_plane" (the faces in the plane x = 0.4 inside the fluid, linked to no element); volumes upstream,
// around_obstacle, wake.
#pragma once

#include <filesystem>

#include "samples/sample_info.h"
#include "testkit/mesh.h"
#include "testkit/vec3.h"

namespace samples::channel {

inline constexpr double kRadius = 0.1;   // of the cylinder, m
inline constexpr double kHeight = 0.32;  // of the channel, m

// "Velocity" in m/s, "Pressure" in Pa and "Temperature" in K, anywhere outside the cylinder.
testkit::Vec3 velocity(double x, double y, double z);
double pressure(double x, double y, double z);
double temperature(double x, double y, double z);
// The temperature is undefined in a ball in the wake.
bool has_temperature(double x, double y, double z);

testkit::Mesh mesh();

// Writes channel/channel.fld below `directory`.
SampleInfo write(const std::filesystem::path& directory);

}  // namespace samples::channel
