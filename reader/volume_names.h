// Finds the volume regions that a motion names.
#pragma once

#include <string_view>
#include <vector>

#include "format/volume_geometry.h"

namespace fld {

// The names of a list of volume regions, which has to outlive it.
class VolumeNames {
 public:
  explicit VolumeNames(const std::vector<smart_ptr<VolumeGeometry>>& volumes);

  // The index of the first volume region whose name is a prefix of `name`; -1 when there is none. Takes no
  // longer than the length of the name and the logarithm of the number of volumes ask for.
  int find(std::string_view name) const;

 private:
  struct Entry {
    std::string_view name;
    int first;   // of the volumes whose names are prefixes of this one or the same, the first
    int parent;  // the entry of the longest name that is a proper prefix of this one; -1: none
  };
  std::vector<Entry> entries_;  // ascending by name, each name once
};

}  // namespace fld
