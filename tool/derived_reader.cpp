#include "tool/derived_reader.h"

namespace tool {

DerivedReader::DerivedReader(host::Session& session)
    : values_(session, [this, &session](const host::Part& part) {
        return names_.of(session, part) == kCylindricalAxes;
      }) {}

vtkSmartPointer<vtkFloatArray> DerivedReader::on_part(const analysis::DerivedVariable& variable, int part) {
  return values_.on_part(variable, part);
}

}  // namespace tool
