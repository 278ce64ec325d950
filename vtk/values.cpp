#include "vtk/values.h"

#include <vtkDoubleArray.h>
#include <vtkFloatArray.h>

#include "host/tuples.h"
#include "vtk/labels.h"

namespace vtkdata {
namespace {

// Null if the variable has no values here.
template <typename Array>
vtkSmartPointer<vtkDataArray> make(host::Session& session, const host::Variable& variable, int part) {
  const auto components = session.given_components(variable.number, part);
  if (!components) return nullptr;
  auto array = vtkSmartPointer<Array>::New();
  array->SetNumberOfComponents(variable.components());
  array->SetNumberOfTuples(static_cast<vtkIdType>(components->front().values().size()));
  host::put_tuples(*components, array->GetPointer(0));
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
  set_unit(array, asked);
  return array;
}

}  // namespace vtkdata
