#include "tool/part_integrals.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

#include "tool/vector_components.h"

namespace tool {
namespace {

bool is_face(const host::ElementBlock& block) {
  return block.shape.dimension == 2;
}

// The values of all components of a quantity that are needed on a part.
struct ReadQuantity {
  std::array<host::HostArray, 3> components{};
  host::HostArray lengths;  // of a vector
};

host::HostArray lengths_of(const std::array<host::HostArray, 3>& vector) {
  const std::span<const float> x = vector[0].values();
  const std::span<const float> y = vector[1].values();
  const std::span<const float> z = vector[2].values();
  host::HostArray lengths(x.size(), 0);
  for (std::size_t i = 0; i < x.size(); ++i) lengths.entries()[i + 1] = magnitude(x[i], y[i], z[i]);
  return lengths;
}

// Reads them into `read`; the outcome.
host::PartValues read_quantity(QuantityValues& source, const Quantity& quantity, int part,
                               ReadQuantity& read) {
  host::PartValues values;
  for (int i = 0; i < quantity.variable.components(); ++i) {
    values = source.values(quantity, part, i);
    if (values.availability != host::Availability::given) return values;
    read.components[static_cast<std::size_t>(i)] = std::exchange(values.array, {});
  }
  if (quantity.variable.kind == host::VariableKind::vector) read.lengths = lengths_of(read.components);
  return values;
}

std::string lower_case(std::string text) {
  for (char& character : text)
    character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
  return text;
}

// Adds the integrals of a quantity's components.
void add_components(const analysis::PartMesh& mesh, const Quantity& quantity, const ReadQuantity& read,
                    QuantityIntegrals& found) {
  std::vector<analysis::Column> columns;
  const auto add = [&](const char* component, const host::HostArray& values) {
    found.components.push_back({component, {}});
    columns.push_back({values.values(), quantity.variable.location});
  };
  if (quantity.variable.kind != host::VariableKind::vector) {
    add("", read.components.front());
  } else {
    for (std::size_t i = 0; i < kComponents.size(); ++i) {
      if (quantity.component && static_cast<std::size_t>(*quantity.component) != i) continue;
      add(kComponents[i], i < kAxes.size() ? read.components[i] : read.lengths);
    }
  }
  const std::vector<analysis::Integral> integrals = analysis::integrate(mesh, columns);
  for (std::size_t i = 0; i < integrals.size(); ++i) found.components[i].integral = integrals[i];
}

}  // namespace

PartIntegrator::PartIntegrator(host::Session& session, PressureOptions pressure)
    : session_(session), pressure_(std::move(pressure)), values_(session) {}

bool PartIntegrator::is_cylindrical(const host::Part& part) {
  return names_.of(session_, part) == kCylindricalAxes;
}

void PartIntegrator::find_directions(const std::vector<int>& parts) {
  std::vector<int> surfaces;
  for (const int part : parts) {
    if (session_.part(part).kind == host::PartKind::surface) surfaces.push_back(part);
  }
  directions_ = analysis::find_face_directions(
      session_, surfaces, [this](const host::Part& part) { return is_cylindrical(part); });
  directed_at_ = session_.geometry_step_of(session_.step());
}

const analysis::FaceDirections& PartIntegrator::directions_of(int part, std::size_t faces) {
  const bool may_have_changed = session_.changing_geometry() == host::ChangingGeometry::connectivity &&
                                directed_at_ != session_.geometry_step_of(session_.step());
  const auto known = directions_.find(part);
  if (may_have_changed || known == directions_.end() || known->second.signs.size() != faces) {
    std::vector<int> parts;
    for (const auto& [number, directions] : directions_) {
      if (number <= static_cast<int>(session_.parts().size())) parts.push_back(number);
    }
    if (std::find(parts.begin(), parts.end(), part) == parts.end()) parts.push_back(part);
    find_directions(parts);
  }
  return directions_.at(part);
}

PartIntegrals PartIntegrator::integrate(const std::vector<Quantity>& quantities, int part) {
  const analysis::PartMesh mesh = {
      analysis::cartesian_coordinates(session_, part,
                                      [this](const host::Part& asked) { return is_cylindrical(asked); }),
      session_.elements(part)};
  PartIntegrals found;
  found.part = part;
  found.is_surface = session_.part(part).kind == host::PartKind::surface &&
                     std::all_of(mesh.blocks.begin(), mesh.blocks.end(), is_face);
  found.elements = mesh.element_count();
  found.measure = analysis::measure_of(mesh);
  static const analysis::FaceDirections kNoDirections;
  const analysis::FaceDirections& directions =
      found.is_surface ? directions_of(part, found.elements) : kNoDirections;
  if (found.is_surface) {
    found.vector_area = analysis::vector_area(mesh, directions.signs);
    found.directions = {{}, directions.turned, directions.inside, directions.without_element};
  }
  for (const Quantity& quantity : quantities) {
    QuantityIntegrals& of_one = found.quantities.emplace_back();
    of_one.variable = quantity.variable;
    ReadQuantity read;
    of_one.failed = read_quantity(values_, quantity, part, read);
    of_one.availability = of_one.failed.availability;
    if (of_one.availability != host::Availability::given) continue;
    add_components(mesh, quantity, read, of_one);
    if (!found.is_surface || quantity.variable.kind != host::VariableKind::vector || quantity.component)
      continue;
    const host::Location location = quantity.variable.location;
    const std::array<analysis::Column, 3> vector = {{{read.components[0].values(), location},
                                                     {read.components[1].values(), location},
                                                     {read.components[2].values(), location}}};
    of_one.components.push_back({"normal", analysis::integrate_flow(mesh, directions.signs, vector)});
  }
  if (found.is_surface && pressure_.pressure) {
    const host::PartValues values =
        values_.values(*pressure_.pressure, part, pressure_.pressure->component.value_or(0));
    if (values.availability == host::Availability::given) {
      found.force = analysis::integrate_pressure(mesh, directions.signs,
                                                 {values.values(), pressure_.pressure->variable.location},
                                                 pressure_.reference, pressure_.about);
    }
  }
  return found;
}

std::optional<Quantity> usual_pressure(host::Session& session) {
  std::optional<Quantity> found;
  for (const host::Variable& variable : session.variables()) {
    const std::string name = lower_case(variable.name);
    if (variable.kind != host::VariableKind::scalar || (name != "p" && name != "pres" && name != "pressure"))
      continue;
    if (found) return std::nullopt;
    found = Quantity{variable, std::nullopt, std::nullopt};
  }
  return found;
}

}  // namespace tool
