#include "paraview/selection.h"

namespace paraview {

bool Selection::is_on(const std::string& name) const {
  const auto set = switched_.find(name);
  if (set != switched_.end()) return set->second;
  const auto offered = defaults_.find(name);
  return offered != defaults_.end() && offered->second;
}

bool Selection::set(const std::string& name, bool on) {
  const bool was_on = is_on(name);
  switched_[name] = on;
  return was_on != on;
}

}  // namespace paraview
