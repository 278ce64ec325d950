// The geometry of a region set at a step, as the files of a series make it up.
#pragma once

#include <cstdint>
#include <vector>

#include "tests/decoders/decoded_file.h"

namespace decoders {

// Node and element numbers are zero-based here; some may be out of range.
struct ExpectedGeometry {
  std::int32_t coordinate_system = 0;
  DecodedNodes nodes{};
  DecodedElements elements{};
  std::vector<std::int32_t> materials{};
  std::vector<DecodedSurface> surfaces{};
  std::vector<DecodedVolume> volumes{};
  std::vector<std::size_t> heads{};  // where an element's nodes begin
  std::vector<double> tolerance{};   // how exact the position of a node is; 0 unless it was moved

  // Whether there is a node of this number.
  bool has_node(std::int32_t number) const {
    return number >= 0 && static_cast<std::size_t>(number) < nodes.count();
  }
  bool has_element(std::int32_t number) const {
    return number >= 0 && static_cast<std::size_t>(number) < elements.types.size();
  }
  // The nodes of an element that the connectivity has.
  std::vector<std::int32_t> nodes_of(std::size_t element) const;

  // Replaces what the region set of a file with this index base has.
  void load(const DecodedRegionSet& set, std::int32_t bias);
  void move(const DecodedMotion& motion);
};

// Nodes of an element or face, 0 for an unknown code.
int nodes_of_element_code(std::int32_t code);
int nodes_of_face_code(std::int32_t code);

}  // namespace decoders
