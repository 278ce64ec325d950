// The parts of a region set, and what a host should get of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tests/decoders/answers.h"
#include "tests/decoders/expected_geometry.h"

namespace decoders {

inline constexpr std::size_t kMostDescription = 79;  // characters

// A face or an element of a part.
struct Cell {
  std::vector<std::int32_t> nodes{};  // those that the lists have
  int count = 0;                      // of nodes that it should have
  std::int64_t element = -1;          // whose material it has
  bool has_material = true;
};

struct ExpectedPart {
  std::size_t set = 0;
  bool is_whole = false;
  std::string name{};
  std::vector<std::int32_t> nodes{};         // in ascending order
  std::map<int, std::vector<Cell>> cells{};  // by slot
};

ExpectedPart surface_part(const ExpectedGeometry& geometry, const DecodedSurface& surface);
ExpectedPart volume_part(const ExpectedGeometry& geometry, const DecodedVolume& volume);
ExpectedPart whole_part(const ExpectedGeometry& geometry);

// Name, counts, coordinates and connectivity of the part.
PartAnswers answers_of(const ExpectedGeometry& geometry, const ExpectedPart& part);

}  // namespace decoders
