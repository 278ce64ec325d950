#include "vtk/names.h"

#include <map>

#include "host/text_encoding.h"

namespace vtkdata {
namespace {

// `kind` is what stands for a missing name, in front of the number.
template <typename Items>
std::vector<std::string> unique_names(const Items& items, const char* kind) {
  std::vector<std::string> names;
  names.reserve(items.size());
  std::map<std::string, int> uses;
  for (const auto& item : items) {
    std::string name = host::to_utf8(item.name);
    if (name.empty()) name = std::string(kind) + " " + std::to_string(item.number);
    ++uses[name];
    names.push_back(std::move(name));
  }
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (uses[names[i]] == 1) continue;
    std::string name = names[i] + " (" + std::to_string(items[i].number) + ")";
    while (uses.contains(name)) name += '\'';
    uses[name] = 1;
    names[i] = std::move(name);
  }
  return names;
}

}  // namespace

std::vector<std::string> part_names(const host::Session& session) {
  return unique_names(session.parts(), "part");
}

std::vector<std::string> variable_names(host::Session& session) {
  return unique_names(session.variables(), "variable");
}

vtkSmartPointer<vtkStringArray> make_labels(host::Session& session) {
  const std::vector<std::string> names = variable_names(session);
  auto labels = vtkSmartPointer<vtkStringArray>::New();
  labels->SetName("Labels");
  for (const host::Variable& variable : session.variables()) {
    if (variable.label.empty()) continue;
    labels->InsertNextValue(names[static_cast<std::size_t>(variable.number) - 1] + ": " +
                            host::to_utf8(variable.label));
  }
  return labels;
}

std::string unit_of_label(std::string_view label) {
  if (!label.ends_with(']')) return {};
  const std::size_t open = label.rfind('[');
  if (open == std::string_view::npos) return {};
  return std::string(label.substr(open + 1, label.size() - open - 2));
}

}  // namespace vtkdata
