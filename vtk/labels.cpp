#include "vtk/labels.h"

#include <vtkInformation.h>
#include <vtkInformationStringKey.h>

#include "host/display_names.h"
#include "host/text_encoding.h"

namespace vtkdata {

vtkSmartPointer<vtkStringArray> make_labels(host::Session& session) {
  auto labels = vtkSmartPointer<vtkStringArray>::New();
  labels->SetName("Labels");
  for (const std::string& label : host::labelled_names(session)) labels->InsertNextValue(label);
  return labels;
}

void set_unit(vtkDataArray* array, const host::Variable& variable) {
  const std::string unit = host::unit_of_label(host::printable(variable.label));
  if (!unit.empty()) array->GetInformation()->Set(vtkDataArray::UNITS_LABEL(), unit.c_str());
}

}  // namespace vtkdata
