// The whole meshes of a dataset's region sets at one step, in Cartesian coordinates.
#pragma once

#include <functional>
#include <vector>

#include "host/session.h"

namespace analysis {

// Whether the coordinates of a part at the session's step are radius, angle (in radians) and height: those of
// the whole mesh of a cylindrical region set are.
using IsCylindrical = std::function<bool(const host::Part&)>;

// The numbers of the whole meshes at the session's step, in the order of the region sets.
std::vector<int> whole_parts(const host::Session& session);

// The part's coordinates at the session's step, converted if they are cylindrical, to the very numbers that
// the reader gives for other parts.
host::Coordinates cartesian_coordinates(host::Session& session, int part,
                                        const IsCylindrical& is_cylindrical);

}  // namespace analysis
