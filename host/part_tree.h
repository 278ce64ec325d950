// The hierarchy in which programs show the parts of a dataset: surfaces with the reader's groups, volumes,
// and whole meshes.
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

// The folders "Surfaces", "Volumes" and "Whole mesh", in this order and without empty ones, for the part
// numbers in `chosen`. "Surfaces" has the reader's groups (Grouping_Regions, Undefined_Regions) as
// subfolders, and the other surfaces. Every part appears once.
std::vector<PartFolder> make_part_tree(Session& session, const std::vector<int>& chosen);

// The same for parts and groups that are at hand; `parts` are in the order of their numbers, from 1.
std::vector<PartFolder> make_part_tree(const std::vector<Part>& parts, const std::vector<PartGroup>& groups,
                                       const std::vector<int>& chosen);

// For all parts.
std::vector<PartFolder> make_part_tree(Session& session);

}  // namespace host
