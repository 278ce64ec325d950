#include "host/display_names.h"

#include <map>

#include "host/text_encoding.h"

namespace host {
namespace {

// The text in UTF-8 as XML can hold it: without control characters, and with U+FFFD for the two code points
// that are no characters.
std::string xml_text(const std::string& bytes) {
  std::string text = printable(bytes);
  for (const char* none : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"}) {
    for (std::size_t at = text.find(none); at != std::string::npos; at = text.find(none, at))
      text.replace(at, 3, "\xEF\xBF\xBD");
  }
  return text;
}

// `kind` is what stands for a missing name, in front of the number; `mark_of` gives what tells an item from
// others of its name.
template <typename Items, typename MarkOf>
std::vector<std::string> unique_names(const Items& items, const char* kind, MarkOf mark_of) {
  std::vector<std::string> names;
  names.reserve(items.size());
  std::map<std::string, int> uses;
  for (const auto& item : items) {
    std::string name = xml_text(item.name);
    if (name.empty()) name = std::string(kind) + " " + std::to_string(item.number);
    ++uses[name];
    names.push_back(std::move(name));
  }
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (uses[names[i]] == 1) continue;
    std::string name = names[i] + " (" + mark_of(items[i]) + ")";
    while (uses.contains(name)) name += '\'';
    uses[name] = 1;
    names[i] = std::move(name);
  }
  return names;
}

}  // namespace

std::vector<std::string> part_names(const std::vector<Part>& parts) {
  return unique_names(parts, "part", [](const Part& part) {
    return part.kind == PartKind::whole && part.region_set ? "region set " + std::to_string(*part.region_set)
                                                           : std::to_string(part.number);
  });
}

std::vector<std::string> part_names(const Session& session) {
  return part_names(session.parts());
}

std::vector<std::string> variable_names(const std::vector<Variable>& variables) {
  return unique_names(variables, "variable",
                      [](const Variable& variable) { return std::to_string(variable.number); });
}

std::vector<std::string> variable_names(Session& session) {
  return variable_names(session.variables());
}

std::vector<std::string> labelled_names(const std::vector<Variable>& variables) {
  const std::vector<std::string> names = variable_names(variables);
  std::vector<std::string> labels;
  for (const Variable& variable : variables) {
    if (variable.label.empty()) continue;
    labels.push_back(names[static_cast<std::size_t>(variable.number) - 1] + ": " + xml_text(variable.label));
  }
  return labels;
}

std::vector<std::string> labelled_names(Session& session) {
  return labelled_names(session.variables());
}

std::string unit_of_label(std::string_view label) {
  if (!label.ends_with(']')) return {};
  const std::size_t open = label.rfind('[');
  if (open == std::string_view::npos) return {};
  return std::string(label.substr(open + 1, label.size() - open - 2));
}

}  // namespace host
