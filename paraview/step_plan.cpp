#include "paraview/step_plan.h"

#include "layout/bytes.h"

namespace paraview {
namespace {

void put_folders(layout::ByteWriter& to, const std::vector<host::PartFolder>& folders) {
  to.put_list(folders, [&](const host::PartFolder& folder) {
    to.put_text(folder.name);
    to.put_list(folder.parts, [&](int part) { to.put(part); });
    put_folders(to, folder.folders);
  });
}

std::vector<host::PartFolder> get_folders(layout::ByteReader& from) {
  return from.list<host::PartFolder>([&] {
    host::PartFolder folder;
    folder.name = from.text();
    folder.parts = from.list<int>([&] { return from.get<int>(); });
    folder.folders = get_folders(from);
    return folder;
  });
}

}  // namespace

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
