// Names that are switched on and off, as a reader offers them to ParaView.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

namespace paraview {

class Selection {
 public:
  // Offers these names; `is_on` says of an item whether it is on unless somebody has switched it. What was
  // switched stays so while other names are offered.
  template <typename Items, typename IsOn>
  void offer(const Items& items, IsOn is_on) {
    names_.clear();
    defaults_.clear();
    for (const auto& item : items) {
      names_.push_back(item.name);
      defaults_.emplace(item.name, is_on(item));
    }
  }

  const std::vector<std::string>& names() const { return names_; }
  // A name that is not offered is on if somebody has switched it on.
  bool is_on(const std::string& name) const;
  // Returns whether that changes anything.
  bool set(const std::string& name, bool on);

 private:
  std::vector<std::string> names_;
  std::unordered_map<std::string, bool> defaults_;  // of the names offered
  std::unordered_map<std::string, bool> switched_;  // of all names that ever were
};

}  // namespace paraview
