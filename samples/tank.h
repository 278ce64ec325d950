// A stirred tank: an impeller with six blades rotates in the middle of a tank of water together with its part
// of the mesh. A series of 8 files; only the first has geometry, the others give the rotation of the
// impeller's region.
//
// The tank has radius 0.25 m and stands from z = 0 to 0.5 m on the plane z = 0; the axis is that of z,
// through the origin. Volumes impeller_zone (radius 0.125 m, z = 0.12 to 0.24 m) and tank_zone around it;
// they share no node. Surfaces blade_1 to blade_6, disc, hub, sliding_impeller, tank_wall, tank_bottom,
// water_surface, baffles, shaft, sliding_tank, "&VFG_impeller" (blades, disc and hub once more), "@sliding"
// (both sliding surfaces once more, linked to no element).
#pragma once

#include <array>
#include <filesystem>

#include "samples/sample_info.h"
#include "testkit/mesh.h"
#include "testkit/vec3.h"

namespace samples::tank {

inline constexpr int kSteps = 8;
inline constexpr int kCyclesPerStep = 10;  // the files are tank_0.fld, tank_10.fld, ...

// The solution time of a file in s, by its number from 0, and the impeller's angle in radians at a time.
double time_of_step(int step);
double angle(double time);

// "Velocity" in m/s, "Pressure" in Pa and "Temperature" in K at a position and time.
testkit::Vec3 velocity(double x, double y, double z, double time);
double pressure(double x, double y, double z, double time);
double temperature(double x, double y, double z, double time);

// The mesh of the first file, in double precision; the nodes of the impeller's zone come first.
testkit::Mesh mesh();

// The name of a file, by its number from 0.
std::string file_name(int step);

// Writes tank/tank_0.fld, tank/tank_10.fld ... below `directory`.
SampleInfo write(const std::filesystem::path& directory);
// The same with so many files.
SampleInfo write_steps(const std::filesystem::path& directory, int steps);

}  // namespace samples::tank
