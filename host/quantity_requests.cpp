#include "host/quantity_requests.h"

namespace host {

bool QuantityRequests::needs_drop(int variable, int part, std::optional<int> region_set) const {
  const auto earlier = asked_.find(variable);
  if (earlier == asked_.end() || earlier->second.part == part) return false;
  return !region_set || earlier->second.region_set != region_set;
}

void QuantityRequests::note(int variable, int part, std::optional<int> region_set) {
  asked_.insert_or_assign(variable, Request{part, region_set});
}

}  // namespace host
