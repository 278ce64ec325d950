// Counts the NaN, infinite and undefined values of a block.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>

#include "inspect/section_check.h"

namespace inspect {

class RealCheck {
 public:
  struct Tally {
    std::int64_t count = 0;
    std::uint64_t first = 0;  // offset of the first one
  };

  // Values greater than 0.99 times the marker are undefined; without a marker, none are.
  template <class Real>
  void add(const Piece& piece, std::span<const Real> values, const std::optional<Real>& marker) {
    const Real limit = marker ? Real(0.99) * *marker : std::numeric_limits<Real>::infinity();
    std::int64_t odd = 0;
    for (const Real value : values)
      odd += std::abs(value) <= std::numeric_limits<Real>::max() && value <= limit ? 0 : 1;
    total_ += static_cast<std::int64_t>(values.size());
    for (std::size_t i = 0; odd > 0; ++i) {
      const Real value = values[i];
      if (std::isfinite(value) && value <= limit) continue;
      Tally& tally = std::isnan(value) ? not_numbers_ : std::isinf(value) ? infinite_ : undefined_;
      if (tally.count++ == 0) tally.first = offset_of(piece, i, sizeof(Real));
      --odd;
    }
  }

  const Tally& not_numbers() const { return not_numbers_; }
  const Tally& infinite() const { return infinite_; }
  const Tally& undefined() const { return undefined_; }
  // "3 of 100"
  std::string share(const Tally& tally) const {
    return std::to_string(tally.count) + " of " + std::to_string(total_);
  }

 private:
  Tally not_numbers_;
  Tally infinite_;
  Tally undefined_;
  std::int64_t total_ = 0;
};

}  // namespace inspect
