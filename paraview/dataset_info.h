// What is known of a dataset before meshes and values are read, in a form that can be sent to other ranks.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/session.h"
#include "paraview/messages.h"

namespace paraview {

struct PartInfo {
  int number = 0;
  std::string name;  // UTF-8, unique
  bool is_whole_mesh = false;
};

struct VariableInfo {
  int number = 0;
  std::string name;  // UTF-8, unique
  std::string unit;  // empty if the label has none
  bool is_per_cell = false;
};

struct DatasetInfo {
  std::vector<PartInfo> parts;  // at the first step
  std::vector<VariableInfo> variables;
  std::vector<double> times;        // ascending, one per step
  bool times_are_numbers = false;   // step numbers, because the solution times do not ascend
  std::vector<std::string> labels;  // "name: label"

  // The step to show at a time: the last one that is not later, or the first.
  int step_at(double time) const;
};

// Queries an open session. Throws host::Error.
DatasetInfo ask_dataset_info(host::Session& session);
std::vector<PartInfo> ask_parts(const host::Session& session);

void put_parts(MessageWriter& message, const std::vector<PartInfo>& parts);
std::vector<PartInfo> take_parts(MessageReader& message);
std::string to_bytes(const DatasetInfo& info);
DatasetInfo dataset_info_from(std::string_view bytes);

}  // namespace paraview
