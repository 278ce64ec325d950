// What a step shows, as rank 0 decides it, in a form that can be sent to the other ranks.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "layout/step_layout.h"
#include "paraview/dataset_info.h"

namespace paraview {

struct StepPlan {
  std::string failure;                    // why the step cannot be shown; mostly empty
  std::vector<PartInfo> parts;            // ascending numbers
  std::vector<host::PartFolder> folders;  // their hierarchy
  layout::StepLayout layout;
  std::int32_t ghost_layers = 0;  // of cells that each rank gets around its shares
};

std::string to_bytes(const StepPlan& plan);
StepPlan step_plan_from(std::string_view bytes);

}  // namespace paraview
