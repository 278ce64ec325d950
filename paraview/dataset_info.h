// What is known of a dataset before meshes and values are read, in a form that can be sent to other ranks.
#pragma once

#include <string>
#include <vector>
#include <vtkMultiProcessStream.h>

#include "host/session.h"

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

void put(vtkMultiProcessStream& stream, const DatasetInfo& info);
DatasetInfo take_dataset_info(vtkMultiProcessStream& stream);
void put(vtkMultiProcessStream& stream, const std::vector<PartInfo>& parts);
std::vector<PartInfo> take_parts(vtkMultiProcessStream& stream);

// A value of a type that streams know.
template <typename Value>
Value take(vtkMultiProcessStream& stream) {
  Value value{};
  stream >> value;
  return value;
}

// A list: the number of its items, then each as `put_item(item)` writes and `take_item()` reads it.
template <typename Item, typename PutItem>
void put_all(vtkMultiProcessStream& stream, const std::vector<Item>& items, PutItem put_item) {
  stream << static_cast<int>(items.size());
  for (const Item& item : items) put_item(item);
}
template <typename TakeItem>
auto take_all(vtkMultiProcessStream& stream, TakeItem take_item) {
  std::vector<decltype(take_item())> items;
  for (int left = take<int>(stream); left > 0; --left) items.push_back(take_item());
  return items;
}

}  // namespace paraview
