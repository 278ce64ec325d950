// Looks up the volume regions that a motion names.
#pragma once

#include <string_view>
#include <vector>

#include "format/ale.h"

namespace fld {

// An index of the names of a list of volume regions, which must outlive it.
class VolumeNames {
 public:
  explicit VolumeNames(const std::vector<std::string_view>& names);

  // The index of the first volume region whose name is a prefix of `name`, or -1. O(name length + log
  // volumes).
  int find(std::string_view name) const;

 private:
  struct Entry {
    std::string_view name;
    int first;   // lowest volume index whose name is a prefix of this name
    int parent;  // entry with the longest proper prefix of this name, or -1
  };
  std::vector<Entry> entries_;  // sorted by name, without duplicates
};

// For each moving region the volume regions, by their indices in `names`, whose nodes it moves: the last
// region that names a volume has it. Names that match no volume region are left out.
std::vector<std::vector<int>> share_out_volumes(const ALE& ale, const std::vector<std::string_view>& names);

}  // namespace fld
