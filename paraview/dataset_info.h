// What is known of a dataset before meshes and values are read, in a form that can be sent to other ranks.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/part_tree.h"
#include "layout/bytes.h"

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
  int components = 1;
  bool is_per_cell = false;
};

struct DatasetInfo {
  std::vector<std::string> files;  // in the order of the steps
  // At the first step, and what only later ones have, whose numbers go on.
  std::vector<PartInfo> parts;
  std::vector<host::PartFolder> folders;  // their hierarchy
  std::vector<VariableInfo> variables;
  std::vector<double> times;        // ascending, one per step
  bool times_are_numbers = false;   // whether they are step numbers, because the solution times do not ascend
  std::vector<std::string> labels;  // "name: label"

  // The step that is shown at a time: the last one that is not later, else the first. A time within a
  // relative 1e-6 of a step's is that step's.
  int step_at(double time) const;
};

void put_parts(layout::ByteWriter& to, const std::vector<PartInfo>& parts);
std::vector<PartInfo> get_parts(layout::ByteReader& from);
void put_folders(layout::ByteWriter& to, const std::vector<host::PartFolder>& folders);
std::vector<host::PartFolder> get_folders(layout::ByteReader& from);
std::string to_bytes(const DatasetInfo& info);
DatasetInfo dataset_info_from(std::string_view bytes);

}  // namespace paraview
