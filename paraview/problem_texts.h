// What users are told of parts and variables that could not be read.
#pragma once

#include <string>
#include <vector>

#include "parallel/step_reader.h"
#include "paraview/dataset_info.h"

namespace paraview {

// A text per cause, whatever the number of parts and variables that it is about: "cannot read 'Pressure' and
// 2 more on part 'hub' and 7 more: REASON". `parts` are those of the step.
std::vector<std::string> problem_texts(const std::vector<parallel::Problem>& problems,
                                       const std::vector<PartInfo>& parts, const DatasetInfo& info);

}  // namespace paraview
