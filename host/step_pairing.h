// Which step of the geometry's time set belongs to each step of the variables'.
#pragma once

#include <vector>

namespace host {

// One geometry step, from 0, per entry of `variable_times`: the last one at or before it. The geometry's
// steps are some of the variables' steps in the same order, so they are found among them by equal times one
// after the other; where the times do not match up like that, a time that is not later decides. Without any
// geometry step the entries are 0.
std::vector<int> pair_steps(const std::vector<float>& variable_times,
                            const std::vector<float>& geometry_times);

}  // namespace host
