// What inspect/ decodes of a file: everything that a host may be given, as the file has it.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "inspect/byte_source.h"

namespace decoders {

// Values in the precision in which they are stored.
struct Reals {
  bool is_single = true;
  std::vector<double> values{};
};

struct DecodedNodes {
  std::array<Reals, 3> axes{};

  std::size_t count() const { return axes[0].values.size(); }
};

struct DecodedElements {
  std::vector<std::int32_t> types{}, nodes{};
};

struct DecodedSurface {
  std::string name{};
  std::vector<std::int32_t> types{}, links{}, nodes{};
};

struct DecodedVolume {
  std::string name{};
  std::vector<std::int32_t> elements{};
};

struct DecodedQuantity {
  std::string name{}, label{};
  std::vector<Reals> components{};
};

struct DecodedAction {
  std::string kind{};
  std::vector<double> numbers{};
};

struct DecodedMovingRegion {
  std::vector<std::string> names{};
  std::vector<DecodedAction> actions{};
};

struct DecodedMotion {
  std::int32_t base_cycle = 0;
  std::vector<DecodedMovingRegion> regions{};
};

// The last section of each kind of the mesh; quantities in file order.
struct DecodedRegionSet {
  std::optional<std::int32_t> coordinate_system{};
  std::optional<DecodedNodes> nodes{};
  std::optional<DecodedElements> elements{};
  std::optional<std::vector<std::int32_t>> materials{};
  std::optional<std::vector<DecodedSurface>> surfaces{};
  std::optional<std::vector<DecodedVolume>> volumes{};
  std::vector<DecodedQuantity> scalars{}, vectors{};
  std::optional<DecodedMotion> motion{};
  bool counts_as_mesh = false;  // has a section whose title begins with "LS_Nodes"
};

struct DecodedFile {
  std::int32_t bias = 0;
  std::int32_t cycle = 0;
  double time = 0.0;
  float undefined_single = std::numeric_limits<float>::infinity();
  double undefined_double = std::numeric_limits<double>::infinity();
  std::vector<DecodedRegionSet> region_sets{};
};

// For files in whose structure inspect/ finds no error. Throws inspect::ReadError.
DecodedFile decode(inspect::ByteSource& source);

}  // namespace decoders
