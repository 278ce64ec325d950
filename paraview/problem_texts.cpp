#include "paraview/problem_texts.h"

#include <map>
#include <set>
#include <utility>

#include "host/text_encoding.h"

namespace paraview {
namespace {

struct Affected {
  std::vector<std::string> variables;
  std::set<int> parts;
};

std::string and_more(std::size_t count) {
  return count > 1 ? " and " + std::to_string(count - 1) + " more" : "";
}

}  // namespace

std::vector<std::string> problem_texts(const std::vector<parallel::Problem>& problems,
                                       const std::vector<PartInfo>& parts, const DatasetInfo& info) {
  // By reason, and whether it is about variables.
  std::map<std::pair<std::string, bool>, Affected> causes;
  for (const parallel::Problem& problem : problems) {
    const bool is_of_variable = problem.variable > 0;
    Affected& affected = causes[{problem.reason, is_of_variable}];
    affected.parts.insert(problem.parts.begin(), problem.parts.end());
    if (is_of_variable)
      affected.variables.push_back(info.variables[static_cast<std::size_t>(problem.variable) - 1].name);
  }
  std::vector<std::string> texts;
  for (const auto& [cause, affected] : causes) {
    const auto& [reason, is_of_variables] = cause;
    std::string text = "cannot read ";
    if (is_of_variables)
      text += "'" + affected.variables.front() + "'" + and_more(affected.variables.size()) + " on ";
    text += "part";
    for (const PartInfo& part : parts) {
      if (part.number == *affected.parts.begin()) text += " '" + part.name + "'";
    }
    texts.push_back(message_line(text + and_more(affected.parts.size()) + ": " + reason));
  }
  return texts;
}

std::string other_files_text(const std::vector<std::string>& others, const std::string& opened) {
  const bool is_one = others.size() == 1;
  return message_line(others.front() + and_more(others.size()) + (is_one ? " does" : " do") +
                      " not belong to the dataset of " + opened + " and " + (is_one ? "is" : "are") +
                      " left out");
}

std::string reason_with_file(const std::string& file, const std::string& reason) {
  const std::string start = file + ": ";
  return reason.starts_with(start) ? reason : start + reason;
}

std::string message_line(std::string_view message) {
  return host::without_controls(host::message_to_utf8(message));
}

}  // namespace paraview
