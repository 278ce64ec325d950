// In programs without VTK no variable is derived.
#include "tool/quantity.h"

namespace tool {

const bool kDerivesVariables = false;

class DerivedReader {};

QuantityValues::QuantityValues(host::Session& session) : session_(session) {}

QuantityValues::~QuantityValues() = default;

host::PartValues QuantityValues::derived_values(const Quantity& /*quantity*/, int /*part*/,
                                                int /*component*/) {
  return {.availability = host::Availability::not_offered};
}

}  // namespace tool
