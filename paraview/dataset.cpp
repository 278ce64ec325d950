#include "paraview/dataset.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <stdexcept>
#include <unordered_set>

#include "host/abort_recovery.h"
#include "host/diagnostic_text.h"
#include "host/display_names.h"
#include "host/part_kinds.h"
#include "host/text_encoding.h"
#include "support/errors.h"

namespace paraview {
namespace {

host::PartKind host_kind(layout::PartKind kind) {
  switch (kind) {
    case layout::PartKind::surface:
      return host::PartKind::surface;
    case layout::PartKind::volume:
      return host::PartKind::volume;
    default:
      return host::PartKind::whole;
  }
}

}  // namespace

Dataset::Dataset(const std::string& file, const ReadingOptions& options) : options_(options) {
  call([&] { series_.emplace(file, options.simplify); });
  info_.files = series_->paths();
  call([&] { list_parts(); });
  describe_variables();
  set_times();
}

void Dataset::call(const std::function<void()>& work) {
  bool went_well = false;
  try {
    const host::DiagnosticsCapture::Scope scope(diagnostics_);
    went_well = host::runs_without_assertion(work);
  } catch (const fld::FLDException& error) {
    throw std::runtime_error(error.getMessage());
  }
  if (!went_well) {
    throw std::runtime_error("the reader gave up: " + host::reason_in_diagnostics(diagnostics_.latest()));
  }
}

std::vector<host::Part> Dataset::host_parts(const std::vector<layout::Part>& parts) const {
  std::vector<host::Part> made;
  made.reserve(parts.size());
  for (const layout::Part& part : parts) {
    host::Part& each = made.emplace_back();
    each.number = part.number;
    each.kind = host_kind(part.kind);
    each.name = part.kind == layout::PartKind::whole ? host::kWholeMeshName : part.name;
    each.region_set = part.set;
  }
  return made;
}

std::vector<PartInfo> Dataset::part_infos(const std::vector<host::Part>& parts) const {
  std::vector<std::string> names = host::part_names(parts);
  std::vector<PartInfo> infos;
  infos.reserve(parts.size());
  for (std::size_t i = 0; i < parts.size(); ++i)
    infos.push_back({parts[i].number, std::move(names[i]), parts[i].kind == host::PartKind::whole});
  return infos;
}

// The groups that the names of surfaces tell of.
std::vector<host::PartGroup> Dataset::groups(const std::vector<host::Part>& parts) const {
  if (!options_.group_parts) return {};
  host::PartGroup grouping{"Grouping_Regions", {}};
  host::PartGroup undefined{"Undefined_Regions", {}};
  for (const host::Part& part : parts) {
    if (part.kind != host::PartKind::surface) continue;
    if (part.name.starts_with("&VFG")) grouping.parts.push_back(part.name);
    if (part.name.starts_with('@')) undefined.parts.push_back(part.name);
  }
  return {std::move(grouping), std::move(undefined)};
}

// Those of the first step, and behind them those that only later steps have.
void Dataset::list_parts() {
  std::vector<host::Part> parts = host_parts(series_->parts(0));
  info_.parts = part_infos(parts);
  std::unordered_set<std::string> known;
  for (const PartInfo& part : info_.parts) known.insert(part.name);
  for (const int step : series_->steps_with_mesh()) {
    if (step == 0) continue;
    try {
      const std::vector<host::Part> of_step = host_parts(series_->parts(step));
      std::vector<PartInfo> infos = part_infos(of_step);
      for (std::size_t i = 0; i < infos.size(); ++i) {
        if (!known.insert(infos[i].name).second) continue;
        parts.push_back(of_step[i]);
        parts.back().number = infos[i].number = static_cast<int>(parts.size());
        info_.parts.push_back(std::move(infos[i]));
      }
    } catch (const layout::Error&) {
      // Said when the step is to be shown.
    }
  }
  std::vector<int> numbers(parts.size());
  std::iota(numbers.begin(), numbers.end(), 1);
  info_.folders = host::make_part_tree(parts, groups(parts), numbers);
}

void Dataset::describe_variables() {
  std::vector<host::Variable> variables;
  for (const layout::Variable& variable : series_->variables()) {
    host::Variable& each = variables.emplace_back();
    each.number = variable.number;
    each.name = variable.name;
    each.label = variable.label;
  }
  const std::vector<std::string> names = host::variable_names(variables);
  for (const layout::Variable& variable : series_->variables()) {
    info_.variables.push_back({variable.number, names[static_cast<std::size_t>(variable.number) - 1],
                               host::unit_of_label(host::printable(variable.label)), variable.components,
                               variable.is_material});
  }
  info_.labels = host::labelled_names(variables);
}

void Dataset::set_times() {
  info_.times = series_->times();
  const auto does_not_ascend = [](double a, double b) { return !(a < b); };
  const auto is_no_number = [](double time) { return !std::isfinite(time); };
  if (std::any_of(info_.times.begin(), info_.times.end(), is_no_number) ||
      std::adjacent_find(info_.times.begin(), info_.times.end(), does_not_ascend) != info_.times.end()) {
    info_.times_are_numbers = true;
    std::iota(info_.times.begin(), info_.times.end(), 0.0);
  }
}

StepPlan Dataset::plan(int step, const Choice& choice) {
  StepPlan plan;
  call([&] {
    const std::vector<layout::Part> all = series_->parts(step);
    const std::vector<host::Part> parts = host_parts(all);
    std::vector<layout::Part> chosen;
    std::vector<int> numbers;
    for (PartInfo& part : part_infos(parts)) {
      if (!choice.has_part(part)) continue;
      numbers.push_back(part.number);
      chosen.push_back(all[static_cast<std::size_t>(part.number) - 1]);
      plan.parts.push_back(std::move(part));
    }
    plan.folders = host::make_part_tree(parts, groups(parts), numbers);
    std::vector<int> variables;
    for (const VariableInfo& variable : info_.variables) {
      if (choice.has_variable(variable)) variables.push_back(variable.number);
    }
    plan.layout = series_->locate(step, chosen, variables);
  });
  return plan;
}

}  // namespace paraview
