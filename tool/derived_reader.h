// Derived variables on the parts of a session's step, whatever the coordinates of their meshes.
#pragma once

#include <vtkFloatArray.h>
#include <vtkSmartPointer.h>

#include "analysis/derived_values.h"
#include "host/session.h"
#include "tool/coordinate_names.h"

namespace tool {

class DerivedReader {
 public:
  explicit DerivedReader(host::Session& session);
  DerivedReader(const DerivedReader&) = delete;
  DerivedReader& operator=(const DerivedReader&) = delete;

  // As analysis::DerivedValues::on_part.
  vtkSmartPointer<vtkFloatArray> on_part(const analysis::DerivedVariable& variable, int part);

 private:
  CoordinateNames names_;
  analysis::DerivedValues values_;
};

}  // namespace tool
