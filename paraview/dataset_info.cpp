#include "paraview/dataset_info.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "host/display_names.h"
#include "host/text_encoding.h"
#include "vtk/labels.h"

namespace paraview {
namespace {

std::vector<VariableInfo> ask_variables(host::Session& session) {
  const std::vector<std::string> names = host::variable_names(session);
  std::vector<VariableInfo> variables;
  for (const host::Variable& variable : session.variables()) {
    if (variable.kind == host::VariableKind::other || variable.location == host::Location::other) continue;
    variables.push_back({variable.number, names[static_cast<std::size_t>(variable.number) - 1],
                         host::unit_of_label(host::to_utf8(variable.label)),
                         variable.location == host::Location::element});
  }
  return variables;
}

}  // namespace

int DatasetInfo::step_at(double time) const {
  const auto later = std::upper_bound(times.begin(), times.end(), time);
  return later == times.begin() ? 0 : static_cast<int>(later - times.begin()) - 1;
}

std::vector<PartInfo> ask_parts(const host::Session& session) {
  const std::vector<std::string> names = host::part_names(session);
  std::vector<PartInfo> parts;
  for (const host::Part& part : session.parts()) {
    parts.push_back(
        {part.number, names[static_cast<std::size_t>(part.number) - 1], part.kind == host::PartKind::whole});
  }
  return parts;
}

DatasetInfo ask_dataset_info(host::Session& session) {
  DatasetInfo info;
  info.parts = ask_parts(session);
  info.variables = ask_variables(session);
  const std::vector<float>& times = session.variable_times().times;
  info.times.assign(times.begin(), times.end());
  const auto does_not_ascend = [](double a, double b) { return !(a < b); };
  const auto is_no_number = [](double time) { return !std::isfinite(time); };
  if (std::any_of(info.times.begin(), info.times.end(), is_no_number) ||
      std::adjacent_find(info.times.begin(), info.times.end(), does_not_ascend) != info.times.end()) {
    info.times_are_numbers = true;
    std::iota(info.times.begin(), info.times.end(), 0.0);
  }
  const auto labels = vtkdata::make_labels(session);
  for (vtkIdType i = 0; i < labels->GetNumberOfValues(); ++i) info.labels.push_back(labels->GetValue(i));
  return info;
}

void put(vtkMultiProcessStream& stream, const std::vector<PartInfo>& parts) {
  put_all(stream, parts,
          [&](const PartInfo& part) { stream << part.number << part.name << part.is_whole_mesh; });
}

std::vector<PartInfo> take_parts(vtkMultiProcessStream& stream) {
  return take_all(stream, [&] {
    PartInfo part;
    stream >> part.number >> part.name >> part.is_whole_mesh;
    return part;
  });
}

void put(vtkMultiProcessStream& stream, const DatasetInfo& info) {
  put(stream, info.parts);
  put_all(stream, info.variables, [&](const VariableInfo& variable) {
    stream << variable.number << variable.name << variable.unit << variable.is_per_cell;
  });
  put_all(stream, info.times, [&](double time) { stream << time; });
  stream << info.times_are_numbers;
  put_all(stream, info.labels, [&](const std::string& label) { stream << label; });
}

DatasetInfo take_dataset_info(vtkMultiProcessStream& stream) {
  DatasetInfo info;
  info.parts = take_parts(stream);
  info.variables = take_all(stream, [&] {
    VariableInfo variable;
    stream >> variable.number >> variable.name >> variable.unit >> variable.is_per_cell;
    return variable;
  });
  info.times = take_all(stream, [&] { return take<double>(stream); });
  stream >> info.times_are_numbers;
  info.labels = take_all(stream, [&] { return take<std::string>(stream); });
  return info;
}

}  // namespace paraview
