// The location of the geometry of one region set in a file.
#pragma once

#include <optional>
#include <vector>

#include "format/elements.h"
#include "format/mat_of_elements.h"
#include "format/nodes.h"
#include "format/surface_geometry.h"
#include "format/volume_geometry.h"

namespace fld {

// Missing sections are empty; the last one of a kind is used. The index base is not subtracted.
struct RegionSetLayout {
  int coordinateSystem = 0;
  std::optional<std::vector<SurfaceLayout>> surfaces;
  std::optional<std::vector<VolumeLayout>> volumes;
  std::optional<ElementsLayout> elements;
  std::optional<MaterialsLayout> materials;
  std::optional<NodesLayout> nodes;
};

}  // namespace fld
