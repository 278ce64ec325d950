#include "paraview/dataset_info.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "host/display_names.h"
#include "host/text_encoding.h"
#include "paraview/messages.h"
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

void put_parts(MessageWriter& message, const std::vector<PartInfo>& parts) {
  put_all(message, parts, [&](const PartInfo& part) {
    message.put(std::int64_t{part.number});
    message.put(part.name);
    message.put(std::int64_t{part.is_whole_mesh});
  });
}

std::vector<PartInfo> take_parts(MessageReader& message) {
  // The members of a braced list are taken in their order.
  return take_all<PartInfo>(message, [&] {
    return PartInfo{static_cast<int>(message.number()), message.text(), message.number() != 0};
  });
}

std::string to_bytes(const DatasetInfo& info) {
  MessageWriter message;
  put_parts(message, info.parts);
  put_all(message, info.variables, [&](const VariableInfo& variable) {
    message.put(std::int64_t{variable.number});
    message.put(variable.name);
    message.put(variable.unit);
    message.put(std::int64_t{variable.is_per_cell});
  });
  put_all(message, info.times, [&](double time) { message.put(time); });
  message.put(std::int64_t{info.times_are_numbers});
  put_all(message, info.labels, [&](const std::string& label) { message.put(label); });
  return message.bytes();
}

DatasetInfo dataset_info_from(std::string_view bytes) {
  MessageReader message(bytes);
  DatasetInfo info;
  info.parts = take_parts(message);
  // The members of a braced list are taken in their order.
  info.variables = take_all<VariableInfo>(message, [&] {
    return VariableInfo{static_cast<int>(message.number()), message.text(), message.text(),
                        message.number() != 0};
  });
  info.times = take_all<double>(message, [&] { return message.real(); });
  info.times_are_numbers = message.number() != 0;
  info.labels = take_all<std::string>(message, [&] { return message.text(); });
  return info;
}

}  // namespace paraview
