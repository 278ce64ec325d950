// Moves nodes in place by one action of a motion.
#pragma once

#include <span>

#include "format/ale.h"
#include "support/vfpa.h"

namespace fld {

// Applies the action in double precision to the coordinates of `nodes`, which are indices into the three
// arrays, and rounds to each array's precision. An action that does nothing leaves them as they are.
void move_nodes(const ALE_ACT& act, const VFPA& x, const VFPA& y, const VFPA& z, std::span<const int> nodes);

}  // namespace fld
