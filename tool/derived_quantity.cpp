// The values of derived variables, in programs with VTK.
#include <cmath>

#include "host/undefined_value.h"
#include "tool/derived_reader.h"
#include "tool/quantity.h"

namespace tool {

const bool kDerivesVariables = true;

QuantityValues::QuantityValues(host::Session& session) : session_(session) {}

QuantityValues::~QuantityValues() = default;

host::PartValues QuantityValues::derived_values(const Quantity& quantity, int part, int component) {
  if (!derived_) derived_ = std::make_unique<DerivedReader>(session_);
  const vtkSmartPointer<vtkFloatArray> found = derived_->on_part(*quantity.derived, part);
  host::PartValues values;
  if (!found) {
    values.availability = host::Availability::not_in_this_step;
    return values;
  }
  const auto count = static_cast<std::size_t>(found->GetNumberOfTuples());
  values.array = host::HostArray(count, host::kUndefinedValue);
  for (std::size_t i = 0; i < count; ++i) {
    const float value = found->GetTypedComponent(static_cast<vtkIdType>(i), component);
    if (!std::isnan(value)) values.array.entries()[i + 1] = value;
  }
  return values;
}

}  // namespace tool
