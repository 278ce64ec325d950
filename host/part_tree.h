// The hierarchy that a dataset's parts are shown in: surfaces, with the reader's groups of them, volumes and
// whole meshes.
#pragma once

#include <string>
#include <vector>

#include "host/session.h"

namespace host {

inline constexpr char kSurfaces[] = "Surfaces";
inline constexpr char kVolumes[] = "Volumes";
inline constexpr char kWholeMesh[] = "Whole mesh";

struct PartFolder {
  std::string name;        // UTF-8
  std::vector<int> parts;  // numbers, ascending
  std::vector<PartFolder> folders;

  bool empty() const { return parts.empty() && folders.empty(); }
};

// The folders "Surfaces", "Volumes" and "Whole mesh", in this order and without those that are empty, for the
// parts with a number in `chosen`. "Surfaces" holds the reader's groups (Grouping_Regions,
// Undefined_Regions) as folders and the other surfaces beside them; every part is in one place.
std::vector<PartFolder> make_part_tree(Session& session, const std::vector<int>& chosen);

// For all parts.
std::vector<PartFolder> make_part_tree(Session& session);

}  // namespace host
