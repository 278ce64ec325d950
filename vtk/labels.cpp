#include "vtk/labels.h"

#include "host/display_names.h"

namespace vtkdata {

vtkSmartPointer<vtkStringArray> make_labels(host::Session& session) {
  auto labels = vtkSmartPointer<vtkStringArray>::New();
  labels->SetName("Labels");
  for (const std::string& label : host::labelled_names(session)) labels->InsertNextValue(label);
  return labels;
}

}  // namespace vtkdata
