#include "python/binding/contents.h"

#include <pybind11/stl.h>
#include <vector>

#include "host/display_names.h"
#include "host/part_tree.h"
#include "host/text_encoding.h"

namespace binding {
namespace {

namespace py = pybind11;

const char* kind_name(host::PartKind kind) {
  switch (kind) {
    case host::PartKind::surface:
      return "surface";
    case host::PartKind::volume:
      return "volume";
    case host::PartKind::whole:
      return "whole";
  }
  return "";
}

py::tuple part_tuple(const host::Part& part, const std::string& display_name) {
  py::dict elements;
  for (const host::ElementShape& shape : host::kElementShapes) {
    const int count = part.elements[static_cast<std::size_t>(shape.slot)];
    if (count > 0) elements[py::str(shape.name.data(), shape.name.size())] = count;
  }
  return py::make_tuple(part.number, host::printable(part.name), display_name, kind_name(part.kind),
                        part.region_set, part.nodes, elements);
}

py::list folder_list(const std::vector<host::PartFolder>& folders) {
  py::list list;
  for (const host::PartFolder& folder : folders) {
    py::list numbers;
    for (const int number : folder.parts) numbers.append(number);
    list.append(py::make_tuple(folder.name, numbers, folder_list(folder.folders)));
  }
  return list;
}

template <typename Values>
py::list list_of(const Values& values) {
  py::list list;
  for (const auto& value : values) list.append(value);
  return list;
}

}  // namespace

py::dict reader_identity(Dataset& dataset) {
  const host::ReaderIdentity identity =
      dataset.with_session([](host::Session& session) { return session.reader(); });
  py::dict made;
  made["name"] = host::printable(identity.name);
  made["release"] = host::printable(identity.release);
  made["interface"] = host::printable(identity.api_version);
  return made;
}

py::list times(Dataset& dataset) {
  return list_of(dataset.with_session([](host::Session& session) { return session.variable_times().times; }));
}

py::list geometry_steps(Dataset& dataset) {
  return list_of(dataset.with_session([](host::Session& session) {
    std::vector<int> steps;
    for (int step = 0; step < session.step_count(); ++step) steps.push_back(session.geometry_step_of(step));
    return steps;
  }));
}

py::list files(Dataset& dataset) {
  const std::vector<std::string> paths = dataset.with_session([](host::Session& session) {
    return session.knows_every_file() ? session.traced_files() : std::vector<std::string>();
  });
  py::list list;
  for (const std::string& path : paths) list.append(py::bytes(path));
  return list;
}

py::list parts(Dataset& dataset, int step) {
  std::vector<std::string> names;
  const std::vector<host::Part> all = dataset.at_step(step, [&](host::Session& session) {
    names = host::part_names(session);
    return session.parts();
  });
  py::list list;
  for (std::size_t i = 0; i < all.size(); ++i) list.append(part_tuple(all[i], names[i]));
  return list;
}

py::list variables(Dataset& dataset) {
  std::vector<std::string> names;
  const std::vector<host::Variable> all = dataset.with_session([&](host::Session& session) {
    names = host::variable_names(session);
    return session.variables();
  });
  py::list list;
  for (std::size_t i = 0; i < all.size(); ++i) {
    const host::Variable& variable = all[i];
    if (variable.kind == host::VariableKind::other || variable.location == host::Location::other) continue;
    const std::string label = host::printable(variable.label);
    list.append(py::make_tuple(variable.number, names[i], label, host::unit_of_label(label),
                               variable.kind == host::VariableKind::vector ? "vector" : "scalar",
                               variable.location == host::Location::node ? "node" : "element"));
  }
  return list;
}

py::list groups(Dataset& dataset) {
  const std::vector<host::PartGroup> all =
      dataset.with_session([](host::Session& session) { return session.metadata().groups; });
  py::list list;
  for (const host::PartGroup& group : all) {
    py::list names;
    for (const std::string& name : group.parts) names.append(host::printable(name));
    list.append(py::make_tuple(host::printable(group.name), names));
  }
  return list;
}

py::list part_tree(Dataset& dataset, int step, const std::vector<int>& chosen) {
  return folder_list(
      dataset.at_step(step, [&](host::Session& session) { return host::make_part_tree(session, chosen); }));
}

py::str diagnostics(Dataset& dataset) {
  return host::message_to_utf8(
      dataset.with_session([](host::Session& session) { return session.diagnostics(); }));
}

}  // namespace binding
