#include "tool/picture_parts.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <string_view>
#include <vtkFloatArray.h>

#include "host/part_tree.h"
#include "host/text_encoding.h"
#include "tool/choice.h"
#include "tool/vector_components.h"
#include "vtk/part_grid.h"

namespace tool {
namespace {

// "Static pressure [Pa]" with " x" in front of the unit.
std::string with_component(const std::string& label, std::string_view component) {
  const std::size_t unit = label.ends_with(']') ? label.rfind(" [") : std::string::npos;
  if (unit == std::string::npos) return label + " " + std::string(component);
  return label.substr(0, unit) + " " + std::string(component) + label.substr(unit);
}

PictureScalar scalar_of(const host::Variable& variable, std::optional<int> component) {
  std::string name = host::printable(variable.name);
  std::string title = variable.label.empty() ? name : host::printable(variable.label);
  if (variable.kind == host::VariableKind::vector) {
    const auto index = static_cast<std::size_t>(component.value_or(kMagnitude));
    name = with_component(name, kComponents[index]);
    title = with_component(title, kComponents[index]);
  }
  return {variable.number, component, std::move(name), std::move(title)};
}

PictureScalar scalar_of(host::Session& session, const ChosenComponent& chosen) {
  const bool is_magnitude = chosen.component == kMagnitude;
  return scalar_of(session.variable(chosen.variable), is_magnitude ? std::nullopt : chosen.component);
}

// One number per tuple of a vector.
vtkSmartPointer<vtkFloatArray> reduced(vtkFloatArray* vectors, std::optional<int> component) {
  auto scalars = vtkSmartPointer<vtkFloatArray>::New();
  const vtkIdType count = vectors->GetNumberOfTuples();
  scalars->SetNumberOfValues(count);
  const float* from = vectors->GetPointer(0);
  float* to = scalars->GetPointer(0);
  if (component) {
    for (vtkIdType i = 0; i < count; ++i) to[i] = from[3 * i + *component];
  } else {
    for (vtkIdType i = 0; i < count; ++i) to[i] = magnitude(from[3 * i], from[3 * i + 1], from[3 * i + 2]);
  }
  return scalars;
}

std::set<int> parts_of_kind(const host::Session& session, host::PartKind kind) {
  std::set<int> parts;
  for (const host::Part& part : session.parts()) {
    if (part.kind == kind && part.element_count() > 0) parts.insert(part.number);
  }
  return parts;
}

}  // namespace

std::vector<PictureScalar> find_scalars(host::Session& session, const std::vector<std::string>& lists) {
  std::vector<PictureScalar> scalars;
  for (const ChosenComponent& chosen : choose_components(session, lists))
    scalars.push_back(scalar_of(session, chosen));
  return scalars;
}

PictureScalar find_scalar(host::Session& session, const std::string& text) {
  return scalar_of(session, choose_component(session, text));
}

std::optional<PictureScalar> first_scalar(host::Session& session, const std::vector<int>& parts) {
  for (const host::VariableKind kind : {host::VariableKind::scalar, host::VariableKind::vector}) {
    for (const host::Variable& variable : session.variables()) {
      if (variable.kind != kind || variable.location != host::Location::node) continue;
      const bool has_values = std::any_of(parts.begin(), parts.end(), [&](int part) {
        return session.values(variable.number, part).availability != host::Availability::not_in_this_step;
      });
      if (has_values) return scalar_of(variable, std::nullopt);
    }
  }
  return std::nullopt;
}

ChosenParts usual_parts(host::Session& session) {
  const std::set<int> surfaces = parts_of_kind(session, host::PartKind::surface);
  for (const host::PartFolder& folder : host::make_part_tree(session, {surfaces.begin(), surfaces.end()})) {
    if (folder.name == host::kSurfaces && !folder.parts.empty())
      return {session, {folder.parts.begin(), folder.parts.end()}};
  }
  for (const host::PartKind kind : {host::PartKind::surface, host::PartKind::volume, host::PartKind::whole}) {
    const std::set<int> parts = parts_of_kind(session, kind);
    if (!parts.empty()) return {session, parts};
  }
  return {};
}

void ValueRange::add(vtkDataArray* values, int nodes) {
  has_nodes_ = has_nodes_ || nodes > 0;
  has_values_ = has_values_ || (values != nullptr && nodes > 0);
  auto* array = vtkFloatArray::SafeDownCast(values);
  if (array == nullptr) return;
  add(std::span(array->GetPointer(0), static_cast<std::size_t>(array->GetNumberOfValues())));
}

void ValueRange::add(std::span<const float> values) {
  for (const float number : values) {
    const auto value = static_cast<double>(number);
    if (!std::isfinite(value)) continue;
    low_ = is_empty_ ? value : std::min(low_, value);
    high_ = is_empty_ ? value : std::max(high_, value);
    is_empty_ = false;
  }
}

void ValueRange::add(const ValueRange& other) {
  has_nodes_ = has_nodes_ || other.has_nodes_;
  has_values_ = has_values_ || other.has_values_;
  if (other.is_empty_) return;
  low_ = is_empty_ ? other.low_ : std::min(low_, other.low_);
  high_ = is_empty_ ? other.high_ : std::max(high_, other.high_);
  is_empty_ = false;
}

ValuesOnParts ValueRange::on_parts() const {
  if (!is_empty_ || !has_nodes_) return ValuesOnParts::defined;
  return has_values_ ? ValuesOnParts::undefined : ValuesOnParts::none;
}

std::array<double, 2> ValueRange::ends() const {
  if (is_empty_) return {0, 1};
  if (low_ < high_) return {low_, high_};
  const double margin = low_ == 0 ? 0.5 : std::abs(low_) / 2;
  return {low_ - margin, high_ + margin};
}

vtkSmartPointer<vtkDataArray> scalar_values(host::Session& session, const PictureScalar& scalar, int part) {
  return as_scalars(vtkdata::make_values(session, scalar.variable, part, "scalar"), scalar.component);
}

vtkSmartPointer<vtkDataArray> as_scalars(vtkDataArray* values, std::optional<int> component) {
  if (values == nullptr || values->GetNumberOfComponents() == 1) return values;
  return reduced(vtkFloatArray::SafeDownCast(values), component);
}

}  // namespace tool
