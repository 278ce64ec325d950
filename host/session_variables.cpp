// The variables of a session's dataset and their values.
#include <string>
#include <utility>

#include "host/call_arrays.h"
#include "host/error.h"
#include "host/session.h"
#include "host/undefined_value.h"
#include "host/variable_description.h"

namespace host {
namespace {

// The interface's codes.
constexpr int kScalarType = 1;
constexpr int kVectorType = 2;
constexpr int kPerElement = 1;
constexpr int kPerNode = 4;

VariableKind kind_of(int type) {
  if (type == kScalarType) return VariableKind::scalar;
  return type == kVectorType ? VariableKind::vector : VariableKind::other;
}

Location location_of(int classify) {
  if (classify == kPerNode) return Location::node;
  return classify == kPerElement ? Location::element : Location::other;
}

}  // namespace

void Session::ask_variables() {
  finish_parts();
  const auto count = static_cast<std::size_t>(guarded_.call_checked(entry_.get_number_of_variables));
  VariableArrays<PooledStorage> arrays(count);
  arrays.fill(entry_, [this](const auto& entry_point, auto... arguments) {
    return guarded_.call_checked(entry_point, arguments...);
  });
  std::vector<Variable> variables(count);
  for (std::size_t i = 0; i < count; ++i) {
    VariableDescription parts = split_description(arrays.descriptions.text(i));
    variables[i] = {static_cast<int>(i) + 1,     std::move(parts.name),    std::move(parts.label),
                    arrays.descriptions.text(i), kind_of(arrays.types[i]), location_of(arrays.classify[i]),
                    arrays.time_sets[i]};
  }
  variables_ = std::move(variables);
}

const std::vector<Variable>& Session::variables() {
  require_open();
  if (!variables_) ask_variables();
  return *variables_;
}

const Variable& Session::variable(int number) {
  const std::vector<Variable>& all = variables();
  if (number < 1 || number > static_cast<int>(all.size())) {
    throw Error("variable " + std::to_string(number) + " is outside 1 to " + std::to_string(all.size()));
  }
  return all[static_cast<std::size_t>(number) - 1];
}

PartValues Session::values(int variable, int part, int component) {
  const Variable& asked = this->variable(variable);
  const Part& place = this->part(part);
  if (component < 0 || component >= asked.components()) {
    throw Error("component " + std::to_string(component) + " is outside 0 to " +
                std::to_string(asked.components() - 1));
  }
  if (asked.kind == VariableKind::other || asked.location == Location::other) {
    PartValues none;
    none.availability = Availability::not_offered;
    return none;
  }
  finish_parts();
  // After a failed selection of geometry another step may be current.
  if (selection_ != std::pair(variable_set_, step_)) select(variable_set_, step_);
  if (asked.location == Location::element) return element_values(asked, place, component);
  // Only values per node come from the reader's cache, and with a single region set the cache is right.
  if (region_sets_ > 1) {
    if (requests_.needs_drop(variable, part, place.region_set)) drop_cached_quantity();
    requests_.note(variable, part, place.region_set);
  }
  return node_values(asked, place, component);
}

std::optional<HostArray> Session::given_values(int variable, int part, int component) {
  PartValues asked = values(variable, part, component);
  if (asked.availability == Availability::failed) {
    Error error(asked.reason);
    error.locate(asked.file, step_);
    throw error;
  }
  if (asked.availability != Availability::given) return std::nullopt;
  return std::move(asked.array);
}

std::optional<std::vector<HostArray>> Session::given_components(int variable, int part) {
  std::vector<HostArray> components;
  for (int component = 0; component < this->variable(variable).components(); ++component) {
    std::optional<HostArray> one = given_values(variable, part, component);
    if (!one) return std::nullopt;
    components.push_back(std::move(*one));
  }
  return components;
}

int Session::ask_values(const Variable& variable, const Part& part, int slot, int component, float* entries) {
  const int type = variable.kind == VariableKind::vector ? kVectorType : kScalarType;
  return guarded_.call(entry_.get_var_by_component, variable.number, part.number, type, slot, 0, component,
                       entries);
}

// Whether `result` means success; if not, records the reason and clears the array.
bool Session::note_availability(int result, PartValues& values) const {
  if (result == 1) return true;
  values.array = HostArray();
  values.availability = Availability::failed;
  if (result == 2) values.availability = Availability::not_in_this_step;
  if (result == 3) values.availability = Availability::not_offered;
  if (values.availability == Availability::failed) {
    values.reason = guarded_.failure_reason(result);
    values.file = guarded_.failing_file();
  }
  return false;
}

PartValues Session::node_values(const Variable& variable, const Part& part, int component) {
  PartValues values;
  values.array = HostArray(static_cast<std::size_t>(part.nodes), kUndefinedValue);
  note_availability(ask_values(variable, part, 0, component, values.array.entries()), values);
  return values;
}

PartValues Session::element_values(const Variable& variable, const Part& part, int component) {
  PartValues values;
  values.array = HostArray(static_cast<std::size_t>(part.element_count()), kUndefinedValue);
  float* entries = values.array.entries();
  for (int slot = 0; slot < kElementSlots; ++slot) {
    const int count = part.elements[static_cast<std::size_t>(slot)];
    if (count == 0) continue;
    // The reader leaves entry 0 alone, which is the last value of the slot before.
    if (!note_availability(ask_values(variable, part, slot, component, entries), values)) break;
    entries += count;
  }
  return values;
}

}  // namespace host
