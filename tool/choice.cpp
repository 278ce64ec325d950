#include "tool/choice.h"

#include <fnmatch.h>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

#include "fmt/format.h"
#include "host/text_encoding.h"
#include "tool/exit_status.h"
#include "tool/name_lookup.h"

namespace tool {
namespace {

// Adds the numbers of the items whose name is the text, or else fits it as a pattern.
template <typename Items>
void add_named(const Items& items, const std::string& text, std::set<int>& chosen) {
  std::set<int> fitting;
  std::set<int> equal;
  for (const auto& item : items) {
    if (is_name(item.name, text)) equal.insert(item.number);
    if (fnmatch(text.c_str(), host::to_utf8(item.name).c_str(), 0) == 0) fitting.insert(item.number);
  }
  chosen.merge(equal.empty() ? fitting : equal);
}

// The kinds that a word means; none if it is none of the words.
std::set<host::PartKind> kinds_of(const std::string& word) {
  if (word == "surfaces") return {host::PartKind::surface};
  if (word == "volumes") return {host::PartKind::volume};
  if (word == "whole") return {host::PartKind::whole};
  if (word == "all") return {host::PartKind::surface, host::PartKind::volume, host::PartKind::whole};
  return {};
}

// `what` is the kind of thing, for the message.
template <typename Items>
void add_item(const Items& items, const std::string& text, const std::string& file, const char* what,
              std::set<int>& chosen) {
  if (const auto number = number_in(text, 1, static_cast<int>(items.size()))) {
    chosen.insert(*number);
    return;
  }
  std::set<int> named;
  add_named(items, text, named);
  if (named.empty()) throw no_such_item(file, what, text, items.size());
  chosen.merge(named);
}

}  // namespace

ChosenParts choose_parts(const host::Session& session, const std::vector<std::string>& items) {
  std::set<int> chosen;
  std::set<host::PartKind> kinds;
  for (const std::string& item : items) {
    std::set<host::PartKind> meant = kinds_of(item);
    if (meant.empty()) add_item(session.parts(), item, session.path().string(), "part", chosen);
    kinds.merge(meant);
  }
  for (const host::Part& part : session.parts()) {
    if (kinds.contains(part.kind)) chosen.insert(part.number);
  }
  return {session, chosen, std::move(kinds)};
}

std::vector<int> choose_variables(host::Session& session, const std::vector<std::string>& items) {
  std::set<int> chosen;
  for (const std::string& item : items)
    add_item(session.variables(), item, session.path().string(), "variable", chosen);
  if (items.empty()) {
    for (const host::Variable& variable : session.variables()) chosen.insert(variable.number);
  }
  return {chosen.begin(), chosen.end()};
}

std::vector<int> choose_steps(const host::Session& session, const std::vector<std::string>& items) {
  const int last = session.step_count() - 1;
  std::set<int> chosen;
  for (const std::string& item : items) {
    const std::size_t dash = item.find('-');
    const bool is_range = dash != std::string::npos;
    const std::string_view text = item;
    const auto from = item == "all" ? 0 : number_in(text.substr(0, dash), 0, last);
    const auto to = item == "all" ? last : is_range ? number_in(text.substr(dash + 1), 0, last) : from;
    if (!from || !to || *from > *to) {
      throw CommandError(ExitStatus::usage, session.path().string(),
                         fmt::format("there are no steps '{}': the steps are 0 to {}", item, last));
    }
    for (int step = *from; step <= *to; ++step) chosen.insert(step);
  }
  if (items.empty()) {
    for (int step = 0; step <= last; ++step) chosen.insert(step);
  }
  return {chosen.begin(), chosen.end()};
}

}  // namespace tool
