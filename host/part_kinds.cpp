#include "host/part_kinds.h"

#include <algorithm>
#include <iterator>

namespace host {
namespace {

bool has_cells(const Part& part) {
  return std::any_of(kElementShapes.begin(), kElementShapes.end(), [&](const ElementShape& shape) {
    return shape.dimension == 3 && part.elements[static_cast<std::size_t>(shape.slot)] > 0;
  });
}

}  // namespace

int set_part_kinds(std::vector<Part>& parts) {
  const auto is_region = [](const Part& part) { return part.name != kWholeMeshName; };
  const auto first_whole = std::find_if(parts.rbegin(), parts.rend(), is_region).base();
  const auto first_volume = std::find_if(parts.begin(), first_whole, has_cells);
  const auto region_sets = static_cast<int>(std::distance(first_whole, parts.end()));

  const std::optional<int> only_set = region_sets == 1 ? std::optional(0) : std::nullopt;
  for (auto part = parts.begin(); part != first_whole; ++part) {
    part->kind = part < first_volume ? PartKind::surface : PartKind::volume;
    part->region_set = only_set;
  }
  int region_set = 0;
  for (auto part = first_whole; part != parts.end(); ++part) {
    part->kind = PartKind::whole;
    part->region_set = region_set++;
  }
  return region_sets;
}

}  // namespace host
