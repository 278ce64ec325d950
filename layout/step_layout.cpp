#include "layout/step_layout.h"

#include <algorithm>

#include "layout/bytes.h"

namespace layout {
namespace {

void put(ByteWriter& to, const fld::ALE_ACT& action) {
  to.put_text({action.kind, sizeof action.kind});
  to.put(action.data);
}

fld::ALE_ACT get_action(ByteReader& from) {
  fld::ALE_ACT action;
  const std::string kind = from.text();
  std::copy_n(kind.begin(), std::min(kind.size(), sizeof action.kind), action.kind);
  from.get(action.data);
  return action;
}

void put(ByteWriter& to, const MovingVolumes& moving) {
  to.put_list(moving.lists, [&](const FileArray& list) { to.put(list); });
  to.put_list(moving.actions, [&](const fld::ALE_ACT& action) { put(to, action); });
}

MovingVolumes get_moving(ByteReader& from) {
  MovingVolumes moving;
  moving.lists = from.list<FileArray>([&] { return from.get<FileArray>(); });
  moving.actions = from.list<fld::ALE_ACT>([&] { return get_action(from); });
  return moving;
}

void put(ByteWriter& to, const SetMesh& set) {
  to.put(set.is_cylindrical);
  to.put(set.is_overset);
  to.put(set.element_bias);
  to.put(set.list_bias);
  to.put(set.node_count);
  to.put(set.types);
  to.put(set.conn);
  to.put(set.materials);
  to.put(set.axes);
  to.put(set.motion_file);
  to.put_list(set.motion, [&](const MovingVolumes& moving) { put(to, moving); });
}

SetMesh get_set(ByteReader& from) {
  SetMesh set;
  from.get(set.is_cylindrical);
  from.get(set.is_overset);
  from.get(set.element_bias);
  from.get(set.list_bias);
  from.get(set.node_count);
  from.get(set.types);
  from.get(set.conn);
  from.get(set.materials);
  from.get(set.axes);
  from.get(set.motion_file);
  set.motion = from.list<MovingVolumes>([&] { return get_moving(from); });
  return set;
}

void put(ByteWriter& to, const SetValues& values) {
  to.put(values.components);
  to.put(values.undefined_above);
  to.put_text(values.problem);
}

SetValues get_values(ByteReader& from) {
  SetValues values;
  from.get(values.components);
  from.get(values.undefined_above);
  values.problem = from.text();
  return values;
}

void put(ByteWriter& to, const VariableValues& variable) {
  to.put(variable.number);
  to.put(variable.components);
  to.put(variable.is_material);
  to.put_list(variable.sets, [&](const SetValues& values) { put(to, values); });
}

VariableValues get_variable(ByteReader& from) {
  VariableValues variable;
  from.get(variable.number);
  from.get(variable.components);
  from.get(variable.is_material);
  variable.sets = from.list<SetValues>([&] { return get_values(from); });
  return variable;
}

}  // namespace

std::string to_bytes(const StepLayout& step) {
  ByteWriter to;
  to.put(step.step);
  to.put_list(step.sets, [&](const SetMesh& set) { put(to, set); });
  to.put_list(step.parts, [&](const PartLists& part) { to.put(part); });
  to.put_list(step.variables, [&](const VariableValues& variable) { put(to, variable); });
  return to.take();
}

StepLayout step_layout_from(std::string_view bytes) {
  ByteReader from(bytes);
  StepLayout step;
  from.get(step.step);
  step.sets = from.list<SetMesh>([&] { return get_set(from); });
  step.parts = from.list<PartLists>([&] { return from.get<PartLists>(); });
  step.variables = from.list<VariableValues>([&] { return get_variable(from); });
  return step;
}

}  // namespace layout
