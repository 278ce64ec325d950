// Finds the geometry step that belongs to each step of the variables' time set.
#pragma once

#include <vector>

namespace host {

// One geometry step, from 0, per entry of `variable_times`: the last one at or before it. The geometry steps
// are a subsequence of the variables' steps, so they are matched in order by equal times. If the times do not
// match that way, the last geometry step that is not later is used. All entries are 0 if there is no geometry
// step.
std::vector<int> pair_steps(const std::vector<float>& variable_times,
                            const std::vector<float>& geometry_times);

}  // namespace host
