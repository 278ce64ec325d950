// The interface of the checks of section contents.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/findings.h"
#include "inspect/outline.h"
#include "inspect/pieces.h"

namespace inspect {

// The base file of a motion, for one region set.
struct MotionBase {
  bool has_nodes = false;
  // None if there are more than can be kept.
  std::optional<std::vector<std::string>> volume_names{};
};

// What is known about the rest of the file and the series.
struct Surroundings {
  const Outline& outline;
  // The number of nodes for which a quantity of a region set has values; none if unknown.
  std::function<std::optional<std::int64_t>(std::int64_t region_set)> nodes_of_values{};
  // Whether the series of the file is known, without which motion cannot be checked.
  bool knows_series = false;
  // The file of the series with that cycle number; none if there is none.
  std::function<std::optional<MotionBase>(std::int32_t cycle, std::int64_t region_set)> motion_base{};
};

class SectionCheck {
 public:
  SectionCheck(const Surroundings& surroundings, std::int64_t region_set, Reporter& reporter)
      : surroundings_(surroundings), region_set_(region_set), reporter_(reporter) {}
  virtual ~SectionCheck() = default;
  SectionCheck(const SectionCheck&) = delete;
  SectionCheck& operator=(const SectionCheck&) = delete;

  // Whether the check needs the values of a block.
  virtual bool wants(Content content) const = 0;
  virtual void integers(const Block& /*block*/, const Piece& /*piece*/, std::span<const std::int32_t>) {}
  virtual void reals(const Block& /*block*/, const Piece& /*piece*/, std::span<const float>) {}
  virtual void reals(const Block& /*block*/, const Piece& /*piece*/, std::span<const double>) {}
  virtual void characters(const Block& /*block*/, const Piece& /*piece*/) {}
  virtual void integer(const Block& /*block*/, std::int64_t /*value*/) {}  // of a block of one
  virtual void end_block(const Block& /*block*/) {}

 protected:
  const Surroundings& surroundings() const { return surroundings_; }
  const Outline& outline() const { return surroundings_.outline; }
  std::int64_t region_set() const { return region_set_; }
  const RegionSetOutline& tables() const {
    return outline().region_sets[static_cast<std::size_t>(region_set_)];
  }
  Reporter& reporter() const { return reporter_; }
  void report(Kind kind, std::uint64_t offset, std::string wanted, std::string found) const {
    reporter_.report(kind, offset, std::move(wanted), std::move(found));
  }

 private:
  const Surroundings& surroundings_;
  std::int64_t region_set_;
  Reporter& reporter_;
};

// The check for a section, or null if there is nothing to check.
std::unique_ptr<SectionCheck> make_section_check(const Title& title, const Surroundings& surroundings,
                                                 Reporter& reporter);

// The offset of the i-th value of a piece.
inline std::uint64_t offset_of(const Piece& piece, std::size_t i, std::size_t width = 4) {
  return piece.offset + i * width;
}

}  // namespace inspect
