#include "tool/dataset_comparison.h"

#include <algorithm>
#include <map>

#include "fmt/format.h"
#include "host/error.h"
#include "host/text_encoding.h"
#include "tool/choice.h"
#include "tool/read_error.h"
#include "tool/summary.h"
#include "tool/vector_components.h"

namespace tool {
namespace {

constexpr char kMissing[] = "missing";

std::string variable_words(const host::Variable& variable) {
  return fmt::format("{} per {}", kind_word(variable.kind), location_word(variable.location));
}

}  // namespace

DatasetComparison::DatasetComparison(OpenDataset& a, OpenDataset& b, ComparisonChoice choice, Tell tell,
                                     Progress progress)
    : a_(a), b_(b), choice_(std::move(choice)), tell_(std::move(tell)), progress_(std::move(progress)) {}

template <typename Read>
bool DatasetComparison::reads(OpenDataset& dataset, Read read) {
  if (dataset.session().is_lost()) return false;
  try {
    read(dataset.session());
    return true;
  } catch (const host::Error& error) {
    note_problem(read_problem(error, dataset.session()));
    return false;
  }
}

void DatasetComparison::note_problem(const ReadProblem& problem) {
  if (problems_.empty() || !(problems_.back() == problem)) problems_.push_back(problem);
}

void DatasetComparison::tell(Difference difference) {
  if (steps_) {
    difference.step_a = steps_->first;
    difference.step_b = steps_->second;
  }
  tell_(difference);
}

void DatasetComparison::advance() {
  progress_(done_++, total_);
}

// The chosen parts that the steps have in common; tells those that only one of them has.
std::vector<DatasetComparison::Pair> DatasetComparison::match_parts() {
  std::vector<Pair> pairs;
  const std::map<PartIdentity, int> in_a = part_numbers(a_.session());
  const std::map<PartIdentity, int> in_b = part_numbers(b_.session());
  for (const PartIdentity& identity : part_identities(a_.session())) {
    if (!parts_.contains(identity)) continue;
    const std::string name = host::to_utf8(identity.name);
    const auto found = in_b.find(identity);
    if (found != in_b.end()) {
      pairs.push_back({in_a.at(identity), found->second, name, kind_word(identity.kind)});
    } else {
      tell({.kind = "part",
            .part = DifferingPart{in_a.at(identity), std::nullopt, kind_word(identity.kind), name},
            .a = kind_word(identity.kind),
            .b = kMissing});
    }
  }
  for (const PartIdentity& identity : part_identities(b_.session())) {
    if (!parts_.contains(identity) || in_a.contains(identity)) continue;
    tell({.kind = "part",
          .part = DifferingPart{std::nullopt, in_b.at(identity), kind_word(identity.kind),
                                host::to_utf8(identity.name)},
          .a = kMissing,
          .b = kind_word(identity.kind)});
  }
  return pairs;
}

void DatasetComparison::match_variables() {
  const std::vector<int> numbers = choose_variables(a_.session(), choice_.variables);
  std::map<std::string, int> in_b;
  for (const host::Variable& variable : b_.session().variables())
    in_b.emplace(variable.name, variable.number);
  for (const int number : numbers) {
    const host::Variable& variable = a_.session().variable(number);
    const std::string name = host::to_utf8(variable.name);
    const auto found = in_b.find(variable.name);
    if (found == in_b.end()) {
      tell({.kind = "variable", .variable = name, .a = variable_words(variable), .b = kMissing});
      continue;
    }
    const host::Variable& other = b_.session().variable(found->second);
    in_b.erase(found);
    if (variable.kind != other.kind || variable.location != other.location) {
      tell({.kind = "variable", .variable = name, .a = variable_words(variable), .b = variable_words(other)});
    } else {
      variables_.push_back({number, other.number, name, {}});
    }
  }
  if (!choice_.variables.empty()) return;
  for (const auto& [name, number] : in_b) {
    tell({.kind = "variable",
          .variable = host::to_utf8(name),
          .a = kMissing,
          .b = variable_words(b_.session().variable(number))});
  }
}

// Which steps are compared, when it is all of them.
void DatasetComparison::compare_times() {
  const std::vector<float>& times_a = a_.session().variable_times().times;
  const std::vector<float>& times_b = b_.session().variable_times().times;
  if (times_a.size() != times_b.size()) {
    tell({.kind = "steps", .a = std::to_string(times_a.size()), .b = std::to_string(times_b.size())});
  }
  for (std::size_t i = 0; i < std::min(times_a.size(), times_b.size()); ++i) {
    const auto step = static_cast<int>(i);
    choice_.steps.emplace_back(step, step);
    if (times_a[i] == times_b[i] ||
        choice_.tolerance.allows(static_cast<double>(times_a[i]), static_cast<double>(times_b[i]))) {
      continue;
    }
    tell({.kind = "time",
          .step_a = step,
          .step_b = step,
          .a = fmt::format("{}", times_a[i]),
          .b = fmt::format("{}", times_b[i])});
  }
}

std::size_t DatasetComparison::begin() {
  if (!choice_.steps.empty()) {
    steps_ = choice_.steps.front();
    reads(a_, [&](host::Session& session) { session.select_step(steps_->first); });
    steps_.reset();
  }
  parts_ = choose_parts(a_.session(), choice_.parts);
  const bool reads_variables = reads(a_, [](host::Session& session) { session.variables(); }) &&
                               reads(b_, [](host::Session& session) { session.variables(); });
  if (reads_variables) match_variables();
  const int sets_a = a_.session().region_set_count();
  const int sets_b = b_.session().region_set_count();
  if (sets_a != sets_b)
    tell({.kind = "region_sets", .a = std::to_string(sets_a), .b = std::to_string(sets_b)});
  if (choice_.steps.empty()) compare_times();
  work_per_pair_ = parts_.size() * (1 + variables_.size());
  total_ = choice_.steps.size() * work_per_pair_;
  return choice_.steps.size();
}

void DatasetComparison::compare_pair(std::size_t pair) {
  done_ = pair * work_per_pair_;  // whatever the steps before had in common
  compare_steps(choice_.steps[pair].first, choice_.steps[pair].second);
}

std::vector<int> DatasetComparison::steps() const {
  std::vector<int> steps;
  for (const auto& [step, other] : choice_.steps) steps.push_back(step);
  return steps;
}

void DatasetComparison::compare_steps(int step_a, int step_b) {
  steps_ = std::pair(step_a, step_b);
  if (!reads(a_, [&](host::Session& session) { session.select_step(step_a); }) ||
      !reads(b_, [&](host::Session& session) { session.select_step(step_b); })) {
    return;
  }
  // Parts with as many nodes and elements in both; others have no values to compare.
  std::vector<Pair> comparable;
  for (const Pair& part : match_parts()) {
    advance();
    const host::Part& in_a = a_.session().part(part.a);
    const host::Part& in_b = b_.session().part(part.b);
    if (in_a.nodes != in_b.nodes) {
      tell({.kind = "nodes",
            .part = DifferingPart{part.a, part.b, part.kind, part.name},
            .a = std::to_string(in_a.nodes),
            .b = std::to_string(in_b.nodes)});
    }
    for (const host::ElementShape& shape : host::kElementShapes) {
      const auto slot = static_cast<std::size_t>(shape.slot);
      if (in_a.elements[slot] == in_b.elements[slot]) continue;
      tell({.kind = "elements",
            .part = DifferingPart{part.a, part.b, part.kind, part.name},
            .component = std::string(shape.name),
            .a = std::to_string(in_a.elements[slot]),
            .b = std::to_string(in_b.elements[slot])});
    }
    if (in_a.nodes != in_b.nodes || in_a.elements != in_b.elements) continue;
    compare_mesh(part);
    compare_elements(part);
    comparable.push_back(part);
  }
  // A reader keeps the variable that it read last, so all parts of a variable come before the next one.
  for (const Pair& variable : variables_) {
    for (const Pair& part : comparable) {
      advance();
      compare_variable(variable, part);
    }
  }
}

void DatasetComparison::compare_mesh(const Pair& part) {
  host::Coordinates in_a;
  host::Coordinates in_b;
  if (!reads(a_, [&](host::Session& session) { in_a = session.coordinates(part.a); }) ||
      !reads(b_, [&](host::Session& session) { in_b = session.coordinates(part.b); })) {
    return;
  }
  const AxisNames& axes = names_.of(a_.session(), a_.session().part(part.a));
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const ListDifference list =
        compare_values(in_a.axes[axis].values(), in_b.axes[axis].values(), choice_.tolerance);
    if (list.any())
      tell({.kind = "coordinates",
            .part = DifferingPart{part.a, part.b, part.kind, part.name},
            .component = axes[axis],
            .row = "node",
            .list = list});
  }
}

void DatasetComparison::compare_elements(const Pair& part) {
  std::vector<host::ElementBlock> in_a;
  std::vector<host::ElementBlock> in_b;
  if (!reads(a_, [&](host::Session& session) { in_a = session.elements(part.a); }) ||
      !reads(b_, [&](host::Session& session) { in_b = session.elements(part.b); })) {
    return;
  }
  std::size_t first_element = 0;
  for (std::size_t i = 0; i < in_a.size(); ++i) {
    const ListDifference list = compare_numbers(in_a[i].nodes, in_b[i].nodes);
    if (list.any()) {
      tell({.kind = "connectivity",
            .part = DifferingPart{part.a, part.b, part.kind, part.name},
            .component = std::string(in_a[i].shape.name),
            .row = "element",
            .row_length = static_cast<std::size_t>(in_a[i].shape.nodes),
            .first_row = first_element,
            .list = list});
    }
    first_element += in_a[i].size();
  }
}

void DatasetComparison::compare_variable(const Pair& variable, const Pair& part) {
  const int components = a_.session().variable(variable.a).components();
  for (int component = 0; component < components; ++component) {
    if (!compare_component(variable, part, component)) return;
  }
}

// False when the other components need not be looked at.
bool DatasetComparison::compare_component(const Pair& variable, const Pair& part, int component) {
  host::PartValues in_a;
  host::PartValues in_b;
  if (!reads(a_, [&](host::Session& session) { in_a = session.values(variable.a, part.a, component); }) ||
      !reads(b_, [&](host::Session& session) { in_b = session.values(variable.b, part.b, component); })) {
    return false;
  }
  for (const auto& [dataset, values] : {std::pair(&a_, &in_a), std::pair(&b_, &in_b)}) {
    if (values->availability != host::Availability::failed) continue;
    note_problem(read_problem(*values, dataset->session(), "variable " + variable.name));
    return false;
  }
  if (in_a.availability != in_b.availability) {
    tell({.kind = "availability",
          .part = DifferingPart{part.a, part.b, part.kind, part.name},
          .variable = variable.name,
          .a = availability_word(in_a.availability),
          .b = availability_word(in_b.availability)});
    return false;
  }
  if (in_a.availability != host::Availability::given) return false;
  const ListDifference list = compare_values(in_a.values(), in_b.values(), choice_.tolerance);
  if (list.any()) {
    const host::Variable& described = a_.session().variable(variable.a);
    tell({.kind = "values",
          .part = DifferingPart{part.a, part.b, part.kind, part.name},
          .variable = variable.name,
          .component =
              described.kind == host::VariableKind::vector ? kAxes[static_cast<std::size_t>(component)] : "",
          .row = location_word(described.location),
          .list = list});
  }
  return true;
}

}  // namespace tool
