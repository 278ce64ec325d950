#include "paraview/dataset_info.h"

#include <algorithm>
#include <cmath>

namespace paraview {
namespace {

// How near, relative to it, a time has to be to a step's to mean that step.
constexpr double kSameTime = 1e-6;

void put_texts(layout::ByteWriter& to, const std::vector<std::string>& texts) {
  to.put_list(texts, [&](const std::string& text) { to.put_text(text); });
}

std::vector<std::string> get_texts(layout::ByteReader& from) {
  return from.list<std::string>([&] { return from.text(); });
}

}  // namespace

int DatasetInfo::step_at(double time) const {
  const auto later = std::find_if(times.begin(), times.end(), [time](double step) {
    return step > time && step - time > kSameTime * std::max(std::abs(step), std::abs(time));
  });
  return later == times.begin() ? 0 : static_cast<int>(later - times.begin()) - 1;
}

void put_parts(layout::ByteWriter& to, const std::vector<PartInfo>& parts) {
  to.put_list(parts, [&](const PartInfo& part) {
    to.put(part.number);
    to.put_text(part.name);
    to.put(part.is_whole_mesh);
  });
}

std::vector<PartInfo> get_parts(layout::ByteReader& from) {
  return from.list<PartInfo>([&] {
    PartInfo part;
    from.get(part.number);
    part.name = from.text();
    from.get(part.is_whole_mesh);
    return part;
  });
}

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

std::string to_bytes(const DatasetInfo& info) {
  layout::ByteWriter to;
  put_texts(to, info.files);
  put_parts(to, info.parts);
  put_folders(to, info.folders);
  to.put_list(info.variables, [&](const VariableInfo& variable) {
    to.put(variable.number);
    to.put_text(variable.name);
    to.put_text(variable.unit);
    to.put(variable.components);
    to.put(variable.is_per_cell);
  });
  to.put_list(info.times, [&](double time) { to.put(time); });
  to.put(info.times_are_numbers);
  put_texts(to, info.labels);
  return to.take();
}

DatasetInfo dataset_info_from(std::string_view bytes) {
  layout::ByteReader from(bytes);
  DatasetInfo info;
  info.files = get_texts(from);
  info.parts = get_parts(from);
  info.folders = get_folders(from);
  info.variables = from.list<VariableInfo>([&] {
    VariableInfo variable;
    from.get(variable.number);
    variable.name = from.text();
    variable.unit = from.text();
    from.get(variable.components);
    from.get(variable.is_per_cell);
    return variable;
  });
  info.times = from.list<double>([&] { return from.get<double>(); });
  from.get(info.times_are_numbers);
  info.labels = get_texts(from);
  return info;
}

}  // namespace paraview
