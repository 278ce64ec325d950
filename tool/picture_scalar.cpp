#include "tool/picture_scalar.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vtkFloatArray.h>

#include "host/text_encoding.h"
#include "tool/vector_components.h"
#include "vtk/values.h"

namespace tool {
namespace {

// "Static pressure [Pa]" with " x" in front of the unit.
std::string with_component(const std::string& label, std::string_view component) {
  const std::size_t unit = label.ends_with(']') ? label.rfind(" [") : std::string::npos;
  if (unit == std::string::npos) return label + " " + std::string(component);
  return label.substr(0, unit) + " " + std::string(component) + label.substr(unit);
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

}  // namespace

PictureScalar scalar_of(Quantity quantity) {
  const host::Variable& variable = quantity.variable;
  std::string name = host::printable(variable.name);
  std::string title = variable.label.empty() ? name : host::printable(variable.label);
  if (variable.kind == host::VariableKind::vector) {
    const auto index = static_cast<std::size_t>(quantity.component.value_or(kMagnitude));
    name = with_component(name, kComponents[index]);
    title = with_component(title, kComponents[index]);
  }
  if (quantity.component == kMagnitude) quantity.component.reset();
  return {std::move(quantity), std::move(name), std::move(title)};
}

std::vector<PictureScalar> find_scalars(host::Session& session, const std::vector<std::string>& lists) {
  std::vector<PictureScalar> scalars;
  for (Quantity& quantity : choose_quantities(session, lists))
    scalars.push_back(scalar_of(std::move(quantity)));
  return scalars;
}

PictureScalar find_scalar(host::Session& session, const std::string& text) {
  return scalar_of(choose_quantity(session, text));
}

std::optional<PictureScalar> first_scalar(host::Session& session, const std::vector<int>& parts) {
  for (const host::VariableKind kind : {host::VariableKind::scalar, host::VariableKind::vector}) {
    for (const host::Variable& variable : session.variables()) {
      if (variable.kind != kind || variable.location != host::Location::node) continue;
      const bool has_values = std::any_of(parts.begin(), parts.end(), [&](int part) {
        return session.values(variable.number, part).availability != host::Availability::not_in_this_step;
      });
      if (has_values) return scalar_of({variable, std::nullopt, std::nullopt});
    }
  }
  return std::nullopt;
}

vtkSmartPointer<vtkDataArray> as_scalars(vtkDataArray* values, std::optional<int> component) {
  if (values == nullptr || values->GetNumberOfComponents() == 1) return values;
  return reduced(vtkFloatArray::SafeDownCast(values), component);
}

vtkSmartPointer<vtkDataArray> PictureValues::of(const Quantity& quantity, int part) {
  if (quantity.derived) return derived_.on_part(*quantity.derived, part);
  return vtkdata::make_values(session_, quantity.variable.number, part, "values");
}

vtkSmartPointer<vtkDataArray> PictureValues::of(const PictureScalar& scalar, int part) {
  return as_scalars(of(scalar.quantity, part), scalar.quantity.component);
}

}  // namespace tool
