#include "tool/quantity.h"

#include <algorithm>

#include "fmt/format.h"
#include "host/error.h"
#include "host/text_encoding.h"
#include "tool/choice.h"
#include "tool/exit_status.h"
#include "tool/vector_components.h"

namespace tool {
namespace {

CommandError cannot_derive(const host::Session& session, const std::string& name, const std::string& why) {
  return {ExitStatus::usage, session.path().string(), fmt::format("{}: {}", name, why)};
}

// The variable that is derived; `text` is its name.
analysis::DerivedVariable derived_variable(host::Session& session, const analysis::DerivedName& name,
                                           const std::string& text) {
  if (!kDerivesVariables)
    throw cannot_derive(session, text, "this fldtool was built without VTK, which derives variables");
  const ChosenComponent source = choose_component(session, name.of);
  const host::Variable& variable = session.variable(source.variable);
  const bool is_vector = variable.kind == host::VariableKind::vector;
  const std::string found = host::printable(variable.name);
  if (variable.location != host::Location::node)
    throw cannot_derive(session, text, fmt::format("{} is not given per node", found));
  if (analysis::takes_vector(name.derivation) && (!is_vector || source.component)) {
    throw cannot_derive(
        session, text,
        fmt::format("{} needs a vector, and {} is a {}", analysis::derivation_word(name.derivation),
                    host::without_controls(name.of), is_vector ? "component" : "scalar"));
  }
  if (!analysis::takes_vector(name.derivation) && is_vector &&
      source.component.value_or(kMagnitude) == kMagnitude) {
    throw cannot_derive(session, text,
                        fmt::format("{0} needs a scalar: {1}.x, {1}.y or {1}.z",
                                    analysis::derivation_word(name.derivation), found));
  }
  const std::string ending =
      source.component ? std::string(".") + kAxes.at(static_cast<std::size_t>(*source.component)) : "";
  return {name.derivation, source.variable, source.component.value_or(0),
          fmt::format("{}({}{})", analysis::derivation_word(name.derivation), found, ending)};
}

Quantity quantity_of(const analysis::DerivedVariable& derived, std::optional<int> component) {
  host::Variable variable;
  variable.name = derived.name;
  variable.kind =
      analysis::gives_vector(derived.derivation) ? host::VariableKind::vector : host::VariableKind::scalar;
  variable.location = host::Location::node;
  return {variable, component, derived};
}

// The derived variable that an item means, if it has the form of one and no variable has that name; a
// component of it may follow.
std::optional<Quantity> find_derived(host::Session& session, const std::string& item) {
  if (is_variable(session, item)) return std::nullopt;
  std::string text = item;
  std::optional<analysis::DerivedName> name = analysis::parse_derived_name(text);
  std::optional<int> component;
  if (!name) {
    component = take_component(text);
    if (component) name = analysis::parse_derived_name(text);
  }
  if (!name) return std::nullopt;
  Quantity quantity = quantity_of(derived_variable(session, *name, text), component);
  if (component && quantity.variable.kind != host::VariableKind::vector)
    throw cannot_derive(session, item, "only vectors have components");
  return quantity;
}

}  // namespace

bool may_be_derived(const std::vector<std::string>& lists) {
  return std::any_of(lists.begin(), lists.end(),
                     [](const std::string& list) { return list.find('(') != std::string::npos; });
}

std::vector<Quantity> choose_quantities(host::Session& session, const std::vector<std::string>& lists) {
  std::vector<Quantity> quantities;
  const auto add = [&](const std::vector<std::string>& items) {
    for (const ChosenComponent& chosen : choose_components(session, items))
      quantities.push_back({session.variable(chosen.variable), chosen.component, std::nullopt});
  };
  if (lists.empty()) add({});
  for (const std::string& item : split_variables(session, lists)) {
    if (std::optional<Quantity> derived = find_derived(session, item)) {
      quantities.push_back(std::move(*derived));
    } else {
      add({item});
    }
  }
  return quantities;
}

Quantity choose_quantity(host::Session& session, const std::string& text) {
  if (std::optional<Quantity> derived = find_derived(session, text)) return *std::move(derived);
  const ChosenComponent chosen = choose_component(session, text);
  return {session.variable(chosen.variable), chosen.component, std::nullopt};
}

WholeQuantities choose_whole_quantities(host::Session& session, const std::vector<std::string>& lists) {
  WholeQuantities chosen;
  std::vector<std::string> others;
  for (const std::string& item : split_variables(session, lists)) {
    const std::optional<Quantity> derived = find_derived(session, item);
    if (!derived) {
      others.push_back(item);
    } else if (derived->component) {
      throw cannot_derive(session, item, "only whole variables can be chosen here");
    } else {
      chosen.derived.push_back(*derived->derived);
    }
  }
  if (lists.empty() || !others.empty()) chosen.variables = choose_variables(session, others);
  return chosen;
}

host::PartValues QuantityValues::values(const Quantity& quantity, int part, int component) {
  try {
    if (quantity.derived) return derived_values(quantity, part, component);
    return session_.values(quantity.variable.number, part, component);
  } catch (const host::Error& error) {
    return {.availability = host::Availability::failed, .reason = error.reason(), .file = error.file()};
  }
}

}  // namespace tool
