#include "tool/choice.h"

#include <algorithm>
#include <fnmatch.h>
#include <set>
#include <string_view>
#include <utility>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "host/text_encoding.h"
#include "tool/exit_status.h"
#include "tool/number_range.h"
#include "tool/suggestions.h"
#include "tool/vector_components.h"

namespace tool {
namespace {

constexpr char kListType[] = "LIST";

// What names and numbers may choose: the parts or the variables, by number.
struct Items {
  std::string what;                // "part" or "variable"
  std::string file;                // of the dataset
  std::vector<std::string> names;  // the file's bytes; the number of the first one is 1

  int count() const { return static_cast<int>(names.size()); }
};

template <typename Things>
Items items_of(const host::Session& session, const char* what, const Things& things) {
  Items items{what, session.path().string(), {}};
  for (const auto& thing : things) items.names.push_back(thing.name);
  return items;
}

std::string trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

// The items of a list that are separated by commas, without the blanks around them.
std::vector<std::string> split(std::string_view list) {
  std::vector<std::string> items;
  for (std::size_t from = 0; from <= list.size();) {
    const std::size_t comma = std::min(list.find(',', from), list.size());
    items.push_back(trimmed(list.substr(from, comma - from)));
    from = comma + 1;
  }
  return items;
}

// The numbers of those that have this name, given in UTF-8 or in the file's bytes.
std::set<int> named(const Items& items, const std::string& text) {
  std::set<int> numbers;
  int number = 0;
  for (const std::string& name : items.names) {
    ++number;
    if (name == text || host::to_utf8(name) == text) numbers.insert(number);
  }
  return numbers;
}

std::set<int> fitting(const Items& items, const std::string& pattern) {
  std::set<int> numbers;
  int number = 0;
  for (const std::string& name : items.names) {
    ++number;
    if (fnmatch(pattern.c_str(), host::to_utf8(name).c_str(), 0) == 0) numbers.insert(number);
  }
  return numbers;
}

std::set<int> numbers_in(const NumberRange& range) {
  std::set<int> numbers;
  for (long long number = range.from; number <= range.to; number += range.stride)
    numbers.insert(static_cast<int>(number));
  return numbers;
}

// The numbers that one item of a list means: a number, a name, a range or a pattern; empty if it is none.
std::set<int> find(const Items& items, const std::string& text) {
  const bool is_number = text.find_first_not_of("0123456789") == std::string::npos;
  const std::optional<NumberRange> range = parse_range(text, 1, items.count());
  if (is_number && range) return numbers_in(*range);
  std::set<int> found = named(items, text);
  if (!found.empty()) return found;
  if (range) return numbers_in(*range);
  if (text == "all") return numbers_in({1, items.count(), 1});
  return fitting(items, text);
}

CommandError no_such_item(const Items& items, const std::string& text) {
  std::vector<std::string> names;
  for (const std::string& name : items.names) names.push_back(host::to_utf8(name));
  return {ExitStatus::usage, items.file,
          fmt::format("there is no {0} '{1}': the {0}s are 1 to {2}", items.what, text, items.count()) +
              suggestion("; ", text, names)};
}

// The items of the lists. A list that is the name of something is one item, commas or not.
std::vector<std::string> split_all(const Items& items, const std::vector<std::string>& lists) {
  std::vector<std::string> all;
  for (const std::string& list : lists) {
    if (!named(items, list).empty()) {
      all.push_back(list);
      continue;
    }
    for (std::string& item : split(list)) all.push_back(std::move(item));
  }
  return all;
}

// The kinds that a word means; none if it is not one of the words.
std::set<host::PartKind> kinds_of(const std::string& word) {
  if (word == "surfaces") return {host::PartKind::surface};
  if (word == "volumes") return {host::PartKind::volume};
  if (word == "whole") return {host::PartKind::whole};
  if (word == "all") return {host::PartKind::surface, host::PartKind::volume, host::PartKind::whole};
  return {};
}

Items parts_of(const host::Session& session) {
  return items_of(session, "part", session.parts());
}

void add_component(host::Session& session, const Items& items, const std::string& text,
                   std::vector<ChosenComponent>& chosen) {
  std::set<int> found = find(items, text);
  std::optional<int> component;
  if (found.empty()) {
    std::string name = text;
    component = take_component(name);
    if (component) found = find(items, name);
    std::erase_if(found,
                  [&](int number) { return session.variable(number).kind != host::VariableKind::vector; });
  }
  if (found.empty()) throw no_such_item(items, text);
  for (const int number : found) chosen.push_back({number, component});
}

}  // namespace

CLI::Option* add_list_option(CLI::App& command, const std::string& names, std::vector<std::string>& lists,
                             const std::string& description) {
  CLI::Option* option =
      command.add_option(names, lists, description)->type_name(kListType)->allow_extra_args(false);
  if (!lists.empty()) option->default_str(fmt::format("{}", fmt::join(lists, ",")));
  return option;
}

CLI::Option* add_steps_option(CLI::App& command, std::vector<std::string>& lists,
                              const std::string& description, const std::string& names) {
  const auto has_form = [](const std::string& list) {
    for (const std::string& item : split(list)) {
      if (item != "all" && !is_range(item))
        return fmt::format("'{}' is not a step: write {}", item, kRangeForms);
    }
    return std::string();
  };
  return add_list_option(command, names, lists, description)->check(CLI::Validator(has_form, ""));
}

CLI::Option* add_parts_option(CLI::App& command, std::vector<std::string>& lists,
                              const std::string& description) {
  return add_list_option(command, "-p,--part,--parts", lists, description);
}

CLI::Option* add_variables_option(CLI::App& command, std::vector<std::string>& lists,
                                  const std::string& description) {
  return add_list_option(command, "--variable,--variables", lists, description);
}

bool is_list_option(const CLI::Option& option) {
  return option.get_type_name() == kListType;
}

std::vector<int> choose_steps(const host::Session& session, const std::vector<std::string>& lists) {
  const int last = session.step_count() - 1;
  std::set<int> chosen;
  for (const std::string& list : lists) {
    for (const std::string& item : split(list)) {
      const auto range = item == "all" ? NumberRange{0, last, 1} : parse_range(item, 0, last);
      if (!range) {
        const bool is_number = item.find_first_not_of("0123456789") == std::string::npos;
        throw CommandError(
            ExitStatus::usage, session.path().string(),
            fmt::format("there {}: the steps are 0 to {}",
                        is_number ? "is no step " + item : "are no steps '" + item + "'", last));
      }
      chosen.merge(numbers_in(*range));
    }
  }
  if (lists.empty()) chosen = numbers_in({0, last, 1});
  return {chosen.begin(), chosen.end()};
}

ChosenParts choose_parts(host::Session& session, const std::vector<std::string>& lists) {
  ChosenParts chosen;
  const Items items = parts_of(session);
  std::vector<std::string> unknown;
  for (const std::string& item : split_all(items, lists)) {
    const std::set<host::PartKind> kinds = kinds_of(item);
    chosen.add(session, kinds);
    if (!kinds.empty()) continue;
    const std::set<int> found = find(items, item);
    if (found.empty()) unknown.push_back(item);
    chosen.add(session, found);
  }
  if (unknown.empty()) return chosen;
  const int step = session.step();
  if (step > 0 && !session.is_lost()) session.select_step(0);
  for (const std::string& item : unknown) {
    // A number is that of a part at the step chosen.
    const std::set<int> found = is_range(item) ? std::set<int>{} : find(parts_of(session), item);
    if (found.empty()) throw no_such_item(items, item);
    chosen.add(session, found);
  }
  if (session.step() != step) session.select_step(step);
  return chosen;
}

std::optional<int> take_component(std::string& text) {
  for (std::size_t i = 0; i < kComponents.size(); ++i) {
    const std::string ending = std::string(".") + kComponents[i];
    if (!text.ends_with(ending)) continue;
    text.resize(text.size() - ending.size());
    return static_cast<int>(i);
  }
  return std::nullopt;
}

std::vector<std::string> split_variables(host::Session& session, const std::vector<std::string>& lists) {
  return split_all(items_of(session, "variable", session.variables()), lists);
}

bool is_variable(host::Session& session, const std::string& text) {
  return !named(items_of(session, "variable", session.variables()), text).empty();
}

std::vector<int> choose_variables(host::Session& session, const std::vector<std::string>& lists) {
  const Items items = items_of(session, "variable", session.variables());
  std::set<int> chosen;
  for (const std::string& item : split_all(items, lists)) {
    std::set<int> found = find(items, item);
    if (found.empty()) throw no_such_item(items, item);
    chosen.merge(found);
  }
  if (lists.empty()) chosen = numbers_in({1, items.count(), 1});
  return {chosen.begin(), chosen.end()};
}

std::vector<ChosenComponent> choose_components(host::Session& session,
                                               const std::vector<std::string>& lists) {
  const Items items = items_of(session, "variable", session.variables());
  std::vector<ChosenComponent> chosen;
  for (const std::string& item : split_all(items, lists)) add_component(session, items, item, chosen);
  if (lists.empty()) {
    for (const host::Variable& variable : session.variables()) chosen.push_back({variable.number, {}});
  }
  return chosen;
}

ChosenComponent choose_component(host::Session& session, const std::string& text) {
  const std::vector<ChosenComponent> chosen = choose_components(session, {text});
  if (chosen.size() == 1) return chosen.front();
  throw CommandError(ExitStatus::usage, session.path().string(),
                     fmt::format("'{}' means {} variables: choose one by its number", text, chosen.size()));
}

}  // namespace tool
