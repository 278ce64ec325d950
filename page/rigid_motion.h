// Whether points have moved as a rigid body.
#pragma once

#include <array>
#include <optional>
#include <vector>

namespace page {

// The first three rows of a 4 x 4 matrix, row by row.
using Matrix = std::array<double, 12>;

// The rotation and translation that bring the points (x, y, z each) from one place to another, if every
// single one arrives within `tolerance` along each axis. None for fewer than three points, and none for
// mirrored ones.
std::optional<Matrix> find_rigid_motion(const std::vector<float>& from, const std::vector<float>& to,
                                        double tolerance);

}  // namespace page
