// The outline of a file: the values of its header and the sizes of each region set.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "inspect/visitor.h"

namespace inspect {

struct RegionSetOutline {
  std::uint64_t offset = 0;  // of its title
  std::optional<std::int64_t> nodes{};
  std::optional<std::int64_t> elements{};
  std::optional<std::int32_t> base_cycle{};  // of its motion
};

struct Outline {
  std::int32_t bias = 0;
  std::int32_t cycle = 0;
  double time = 0.0;
  std::optional<float> undefined_single{};  // the markers of undefined values
  std::optional<double> undefined_double{};
  std::uint64_t cycle_offset = 0;  // of the values, 0 if the header has none
  std::uint64_t time_offset = 0;
  std::vector<RegionSetOutline> region_sets{};  // the first kMostRegionSets of them
  std::int64_t region_set_count = 0;
};

inline constexpr std::int64_t kMostRegionSets = 10000;

// Collects the outline during a walk.
class OutlineTaker : public Visitor {
 public:
  const Outline& outline() const { return outline_; }

  void title(const Title& title) override;
  bool wants_data(const Block& block) override;
  void data(const Block& block, const Piece& piece) override;
  void integer(const Block& block, std::int64_t value) override;
  void end_section(const Title& title, const Record& rule) override;

 private:
  Outline outline_;
  std::optional<std::int64_t> count_;  // nodes or elements of the current section, or its base cycle
};

}  // namespace inspect
