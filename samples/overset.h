// Steady flow past a cylinder on two overlapping meshes: region set 0 "background", a box of hexahedra
// without the cylinder; region set 1 "ring", prisms around the cylinder. One file in double precision,
// records of at most 4096 values.
//
// The box reaches from x = -1 to 2 m, y = -1 to 1 m, z = 0 to 0.15 m; the cylinder's axis is that of z, the
// ring ends at radius 0.6 m. Both sets carry "Pressure", "Velocity" and "@BNODE", which is 1 on the nodes
// whose values come from the other mesh and 0 elsewhere. In the background the nodes well inside the ring are
// blanked: pressure and velocity are undefined there.
//
// Surfaces of the background: inlet, outlet, sides, floor, ceiling; of the ring: cylinder, ring_rim,
// ring_floor, ring_ceiling.
#pragma once

#include <filesystem>

#include "samples/sample_info.h"
#include "testkit/mesh.h"
#include "testkit/vec3.h"

namespace samples::overset {

inline constexpr double kRadius = 0.25;    // of the cylinder, m
inline constexpr double kRimRadius = 0.6;  // outer radius of the ring, m

// "Velocity" in m/s and "Pressure" in Pa, anywhere outside the cylinder.
testkit::Vec3 velocity(double x, double y, double z);
double pressure(double x, double y, double z);

// Whether a node of the background is blanked.
bool is_blanked(double x, double y);
// "@BNODE" of a node of each set.
double background_fringe(double x, double y, double z);
double ring_fringe(double x, double y, double z);

testkit::Mesh background_mesh();
testkit::Mesh ring_mesh();

// Writes overset/overset.fld below `directory`.
SampleInfo write(const std::filesystem::path& directory);

}  // namespace samples::overset
