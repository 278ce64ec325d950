#include "inspect/index_check.h"

#include <array>
#include <utility>

#include "fmt/format.h"
#include "inspect/section_check.h"

namespace inspect {
namespace {

using Corners = std::array<std::uint8_t, 256>;

constexpr Corners corners_of(std::initializer_list<std::pair<int, int>> codes) {
  Corners corners{};
  for (const auto& [code, count] : codes) {
    corners[static_cast<std::size_t>(code)] = static_cast<std::uint8_t>(count);
  }
  return corners;
}

constexpr Corners kElements = corners_of({{23, 3}, {24, 4}, {34, 4}, {35, 5}, {36, 6}, {38, 8}});
constexpr Corners kFaces = corners_of({{122, 2}, {133, 3}, {134, 4}});

const Corners& corners_of(CodeFamily family) {
  return family == CodeFamily::elements ? kElements : kFaces;
}

std::int64_t corners_in(const Corners& corners, std::int32_t code) {
  const auto place = static_cast<std::uint32_t>(code);
  return place < corners.size() ? corners[place] : 0;
}

}  // namespace

void IndexRange::check(const Piece& piece, std::span<const std::int32_t> indices, Kind kind,
                       Reporter& reporter) const {
  if (!count) return;
  const auto low = static_cast<std::uint32_t>(first);
  const auto size = static_cast<std::uint32_t>(*count);
  const auto is_outside = [&](std::int32_t index) {
    return static_cast<std::uint32_t>(index) - low >= size && !(allows_none && index == -1);
  };
  // Usually all are valid; the loop that establishes this has no branch.
  std::uint32_t outside = 0;
  for (const std::int32_t index : indices) outside += is_outside(index) ? 1U : 0U;
  for (std::size_t i = 0; outside > 0 && !reporter.only_counts(kind); ++i) {
    if (!is_outside(indices[i])) continue;
    reporter.report(kind, offset_of(piece, i),
                    fmt::format("{} to {}{}", first, first + *count - 1, allows_none ? ", or -1" : ""),
                    std::to_string(indices[i]));
    --outside;
  }
  if (outside > 0) reporter.count(kind, outside);
}

std::int64_t sum_of_corners(CodeFamily family, const Piece& piece, std::span<const std::int32_t> codes,
                            Kind kind, Reporter& reporter) {
  const Corners& corners = corners_of(family);
  std::int64_t sum = 0;
  std::uint64_t unknown = 0;
  for (std::size_t i = 0; i < codes.size(); ++i) {
    const std::int64_t count = corners_in(corners, codes[i]);
    sum += count;
    if (count > 0) continue;
    if (reporter.only_counts(kind)) {
      ++unknown;
    } else {
      reporter.report(kind, offset_of(piece, i),
                      family == CodeFamily::elements ? "23, 24, 34, 35, 36 or 38" : "122, 133 or 134",
                      std::to_string(codes[i]));
    }
  }
  if (unknown > 0) reporter.count(kind, unknown);
  return sum;
}

}  // namespace inspect
