#include "tool/page_description.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
#include <utility>

#include "fmt/format.h"
#include "host/display_names.h"
#include "host/part_tree.h"
#include "host/text_encoding.h"
#include "nlohmann/json.hpp"
#include "render/colour_map.h"
#include "tool/file_header.h"
#include "tool/vector_components.h"

namespace tool {
namespace {

nlohmann::json describe_parts(const PageEntries& entries) {
  auto parts = nlohmann::json::array();
  for (const PageEntry& entry : entries.all()) {
    parts.push_back({{"name", entry.name},
                     {"number", entry.number},
                     {"axes", entry.axes},
                     {"shown", entry.is_shown},
                     {"faint", entry.is_faint},
                     {"cut", entry.cut.has_value()}});
  }
  return parts;
}

nlohmann::json describe_folders(const std::vector<host::PartFolder>& folders) {
  auto list = nlohmann::json::array();
  for (const host::PartFolder& folder : folders) {
    list.push_back(
        {{"name", folder.name}, {"parts", folder.parts}, {"folders", describe_folders(folder.folders)}});
  }
  return list;
}

nlohmann::json describe_variables(host::Session& session, const PageChoice& choice) {
  const std::vector<std::string> names = host::variable_names(session);
  auto variables = nlohmann::json::array();
  for (const Quantity& quantity : choice.variables) {
    const host::Variable& variable = quantity.variable;
    const std::string label = host::printable(variable.label);
    variables.push_back({{"name", quantity.derived ? host::printable(variable.name)
                                                   : names[static_cast<std::size_t>(variable.number) - 1]},
                         {"label", label},
                         {"unit", host::unit_of_label(label)},
                         {"vector", variable.kind == host::VariableKind::vector},
                         {"element", quantity.is_per_element()}});
  }
  return variables;
}

nlohmann::json describe_maps() {
  auto maps = nlohmann::json::array();
  for (const std::string& name : render::colour_map_names()) {
    const vtkSmartPointer<vtkLookupTable> table = render::make_colour_map(name, 0, 1);
    std::string colours;
    for (vtkIdType i = 0; i < table->GetNumberOfTableValues(); ++i) {
      for (int channel = 0; channel < 3; ++channel)
        colours += fmt::format("{:02x}", std::lround(table->GetTableValue(i)[channel] * 255));
    }
    maps.push_back({{"name", name}, {"colours", colours}});
  }
  return maps;
}

nlohmann::json describe_start(const PageStart& from) {
  nlohmann::json start = {{"variable", nullptr},
                          {"component", nullptr},
                          {"range", nullptr},
                          {"colours", from.options.colours},
                          {"edges", from.options.edges},
                          {"from", from.view.from},
                          {"up", from.view.up}};
  if (const auto& scalar = from.choice.scalar) {
    const auto place =
        std::find_if(from.choice.variables.begin(), from.choice.variables.end(),
                     [&](const Quantity& of_page) { return is_same_variable(of_page, scalar->quantity); });
    start["variable"] = std::distance(from.choice.variables.begin(), place);
    start["component"] = scalar->quantity.component.value_or(kMagnitude);
    start["range"] = from.range;
  }
  return start;
}

}  // namespace

nlohmann::json describe_page(host::Session& session, const PageStart& start) {
  const FileHeader header = read_file_header(start.options.dataset.file);
  std::string solver = header.application;
  if (!header.version.empty()) solver += (solver.empty() ? "version " : " version ") + header.version;
  nlohmann::json about = {
      {"file", host::without_controls(host::message_to_utf8(session.path().filename().string()))},
      {"title", start.options.title
                    ? nlohmann::json(host::without_controls(host::message_to_utf8(*start.options.title)))
                    : nlohmann::json()},
      {"solver", solver},
      {"date", header.date},
      {"comments", header.comments},
      {"writer", "fldtool " FLDTOOL_VERSION},
      {"components", kAxes},
      {"parts", describe_parts(start.entries)},
      {"tree", describe_folders(start.entries.tree())},
      {"variables", describe_variables(session, start.choice)},
      {"maps", describe_maps()},
      {"undefinedColour", render::kUndefinedColour},
      {"start", describe_start(start)}};
  return about;
}

}  // namespace tool
