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
#include "render/colour_map.h"
#include "tool/file_header.h"
#include "tool/vector_components.h"

namespace tool {
namespace {

nlohmann::json describe_parts(const PageStart& start) {
  auto parts = nlohmann::json::array();
  for (const PageEntry& entry : start.choice.entries) {
    const bool is_faint =
        !entry.cut && std::binary_search(start.faint.begin(), start.faint.end(), entry.number);
    const bool is_shown =
        is_faint || entry.cut || std::binary_search(start.shown.begin(), start.shown.end(), entry.number);
    parts.push_back({{"name", entry.name},
                     {"number", entry.number},
                     {"shown", is_shown},
                     {"faint", is_faint},
                     {"cut", entry.cut.has_value()}});
  }
  return parts;
}

// `numbers` are those of the parts in the order of the entries.
nlohmann::json describe_folders(const std::vector<host::PartFolder>& folders,
                                const std::vector<int>& numbers) {
  auto list = nlohmann::json::array();
  for (const host::PartFolder& folder : folders) {
    auto parts = nlohmann::json::array();
    for (const int part : folder.parts)
      parts.push_back(std::distance(numbers.begin(), std::lower_bound(numbers.begin(), numbers.end(), part)));
    list.push_back({{"name", folder.name},
                    {"parts", std::move(parts)},
                    {"folders", describe_folders(folder.folders, numbers)}});
  }
  return list;
}

nlohmann::json describe_tree(host::Session& session, const PageChoice& choice) {
  std::vector<int> numbers;
  nlohmann::json cuts = {
      {"name", "Cuts"}, {"parts", nlohmann::json::array()}, {"folders", nlohmann::json::array()}};
  for (std::size_t i = 0; i < choice.entries.size(); ++i) {
    if (choice.entries[i].cut) {
      cuts["parts"].push_back(i);
    } else {
      numbers.push_back(choice.entries[i].number);
    }
  }
  nlohmann::json tree = describe_folders(host::make_part_tree(session, numbers), numbers);
  if (!cuts["parts"].empty()) tree.push_back(std::move(cuts));
  return tree;
}

nlohmann::json describe_variables(host::Session& session, const PageChoice& choice) {
  const std::vector<std::string> names = host::variable_names(session);
  auto variables = nlohmann::json::array();
  for (const int number : choice.variables) {
    const host::Variable& variable = session.variable(number);
    const std::string label = host::printable(variable.label);
    variables.push_back({{"name", names[static_cast<std::size_t>(number) - 1]},
                         {"label", label},
                         {"unit", host::unit_of_label(label)},
                         {"vector", variable.kind == host::VariableKind::vector},
                         {"element", variable.location == host::Location::element}});
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
  if (from.scalar) {
    const auto place =
        std::find(from.choice.variables.begin(), from.choice.variables.end(), from.scalar->variable);
    start["variable"] = std::distance(from.choice.variables.begin(), place);
    start["component"] = from.scalar->component.value_or(kMagnitude);
  }
  if (from.range) start["range"] = *from.range;
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
      {"axes", kAxes},
      {"parts", describe_parts(start)},
      {"tree", describe_tree(session, start.choice)},
      {"variables", describe_variables(session, start.choice)},
      {"maps", describe_maps()},
      {"undefinedColour", render::kUndefinedColour},
      {"start", describe_start(start)}};
  return about;
}

}  // namespace tool
