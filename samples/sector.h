// Steady swirling flow through a sixth of an annulus, in cylindrical coordinates and with index base 1: the
// file's x, y, z are the radius (0.3 to 0.6 m), the angle (0 to 60 degrees, in radians) and the height (0 to
// 0.4 m). Prisms inside, hexahedra outside. One file in single precision.
//
// Surfaces hub, casing, periodic_low, periodic_high (at angle 0 and 60 degrees), inlet (z = 0), outlet;
// volumes inner, outer.
#pragma once

#include <filesystem>

#include "samples/sample_info.h"
#include "testkit/mesh.h"
#include "testkit/vec3.h"

namespace samples::sector {

// "Velocity" in m/s (Cartesian components), "Pressure" in Pa and "Temperature" in K, in Cartesian
// coordinates.
testkit::Vec3 velocity(double x, double y, double z);
double pressure(double x, double y, double z);
double temperature(double x, double y, double z);

// With cylindrical coordinates, as in the file.
testkit::Mesh mesh();

// Writes sector/sector.fld below `directory`.
SampleInfo write(const std::filesystem::path& directory);

}  // namespace samples::sector
