#include "vtk/values.h"

#include <limits>
#include <span>
#include <vtkDoubleArray.h>
#include <vtkFloatArray.h>
#include <vtkInformation.h>
#include <vtkInformationStringKey.h>

#include "host/display_names.h"
#include "host/error.h"
#include "host/text_encoding.h"
#include "host/undefined_value.h"

namespace vtkdata {
namespace {

template <typename Real>
void fill_component(std::span<const float> values, std::size_t components, Real* to) {
  constexpr Real kNothing = std::numeric_limits<Real>::quiet_NaN();
  for (const float value : values) {
    *to = host::is_undefined(value) ? kNothing : static_cast<Real>(value);
    to += components;
  }
}

// Null if the variable has no values here.
template <typename Array>
vtkSmartPointer<vtkDataArray> make(host::Session& session, const host::Variable& variable, int part) {
  const int components = variable.components();
  auto array = vtkSmartPointer<Array>::New();
  array->SetNumberOfComponents(components);
  for (int component = 0; component < components; ++component) {
    const host::PartValues values = session.values(variable.number, part, component);
    if (values.availability == host::Availability::failed) {
      host::Error error(values.reason);
      error.locate(values.file, session.step());
      throw error;
    }
    if (values.availability != host::Availability::given) return nullptr;
    if (component == 0) array->SetNumberOfTuples(static_cast<vtkIdType>(values.values().size()));
    if (values.values().empty()) continue;
    fill_component(values.values(), static_cast<std::size_t>(components), array->GetPointer(component));
  }
  return array;
}

}  // namespace

vtkSmartPointer<vtkDataArray> make_values(host::Session& session, int variable, int part,
                                          const std::string& name, Precision precision) {
  const host::Variable& asked = session.variable(variable);
  vtkSmartPointer<vtkDataArray> array = precision == Precision::single_width
                                            ? make<vtkFloatArray>(session, asked, part)
                                            : make<vtkDoubleArray>(session, asked, part);
  if (!array) return nullptr;
  array->SetName(name.c_str());
  const std::string unit = host::unit_of_label(host::to_utf8(asked.label));
  if (!unit.empty()) array->GetInformation()->Set(vtkDataArray::UNITS_LABEL(), unit.c_str());
  return array;
}

}  // namespace vtkdata
