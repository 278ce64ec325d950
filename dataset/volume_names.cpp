#include "dataset/volume_names.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace fld {

VolumeNames::VolumeNames(const std::vector<std::string_view>& names) {
  entries_.reserve(names.size());
  int index = 0;
  for (const std::string_view name : names) entries_.push_back({name, index++, -1});
  std::sort(entries_.begin(), entries_.end(), [](const Entry& a, const Entry& b) {
    return std::tie(a.name, a.first) < std::tie(b.name, b.first);
  });
  entries_.erase(std::unique(entries_.begin(), entries_.end(),
                             [](const Entry& a, const Entry& b) { return a.name == b.name; }),
                 entries_.end());
  // The prefixes of a name are among the previous entry and that entry's chain of parents.
  for (size_t i = 1; i < entries_.size(); ++i) {
    Entry& entry = entries_[i];
    int prefix = static_cast<int>(i) - 1;
    while (prefix >= 0 && !entry.name.starts_with(entries_[static_cast<size_t>(prefix)].name)) {
      prefix = entries_[static_cast<size_t>(prefix)].parent;
    }
    entry.parent = prefix;
    if (prefix >= 0) entry.first = std::min(entry.first, entries_[static_cast<size_t>(prefix)].first);
  }
}

int VolumeNames::find(std::string_view name) const {
  const auto next =
      std::upper_bound(entries_.begin(), entries_.end(), name,
                       [](std::string_view wanted, const Entry& entry) { return wanted < entry.name; });
  if (next == entries_.begin()) return -1;
  const auto before = next - 1;
  const auto difference = std::mismatch(name.begin(), name.end(), before->name.begin(), before->name.end());
  const auto common = static_cast<size_t>(difference.first - name.begin());
  // Walk up from the previous entry: its first prefix that is no longer than the common part is the longest
  // prefix of `name`.
  auto i = static_cast<int>(before - entries_.begin());
  while (i >= 0 && entries_[static_cast<size_t>(i)].name.size() > common)
    i = entries_[static_cast<size_t>(i)].parent;
  return i >= 0 ? entries_[static_cast<size_t>(i)].first : -1;
}

std::vector<std::vector<int>> share_out_volumes(const ALE& ale, const std::vector<std::string_view>& names) {
  const VolumeNames volumes(names);
  std::vector<char> is_taken(names.size());
  std::vector<std::vector<int>> moved(ale.regions.size());
  for (size_t r = ale.regions.size(); r-- > 0;) {
    for (const std::string& name : ale.regions[r].names) {
      const int found = volumes.find(name);
      if (found < 0 || std::exchange(is_taken[static_cast<size_t>(found)], 1) != 0) continue;
      moved[r].push_back(found);
    }
  }
  return moved;
}

}  // namespace fld
