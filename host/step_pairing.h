// Finds the geometry step that belongs to each step of the variables' time set.
#pragma once

#include <functional>
#include <optional>
#include <vector>

namespace host {

// Which step of the variables a geometry step belongs to, both from 0; empty if it cannot be told.
using StepOfGeometry = std::function<std::optional<int>(int geometry_step)>;

// One geometry step, from 0, per entry of `variable_times`: the last one at or before it. The geometry steps
// are a subsequence of the variables' steps, so they are matched in order by equal times. Where more steps
// follow each other with one time than geometry steps have it, `step_of` is asked which they are; without an
// answer they are the first ones. If the times do not match that way, the last geometry step that is not
// later is used. All entries are 0 if there is no geometry step.
std::vector<int> pair_steps(const std::vector<float>& variable_times,
                            const std::vector<float>& geometry_times, const StepOfGeometry& step_of = {});

}  // namespace host
