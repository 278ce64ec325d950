#include "paraview/step_plan.h"

#include "layout/bytes.h"

namespace paraview {

std::string to_bytes(const StepPlan& plan) {
  layout::ByteWriter to;
  to.put_text(plan.failure);
  put_parts(to, plan.parts);
  put_folders(to, plan.folders);
  to.put_text(to_bytes(plan.layout));
  to.put(plan.ghost_layers);
  return to.take();
}

StepPlan step_plan_from(std::string_view bytes) {
  layout::ByteReader from(bytes);
  StepPlan plan;
  plan.failure = from.text();
  plan.parts = get_parts(from);
  plan.folders = get_folders(from);
  plan.layout = layout::step_layout_from(from.text());
  from.get(plan.ghost_layers);
  return plan;
}

}  // namespace paraview
