#include "inspect/mesh_checks.h"

#include <algorithm>

#include "fmt/format.h"

namespace inspect {
namespace {

constexpr std::int64_t kLargestMaterial = 9999;

bool is_flat(std::int32_t code) {
  return code == 23 || code == 24;
}

}  // namespace

void CoordinateSystemCheck::integer(const Block& block, std::int64_t value) {
  if (block.content != Content::coordinate_system || value == 0 || value == 1) return;
  report(Kind::coordinate_system, first_value(block), "0 or 1", std::to_string(value));
}

bool NodesCheck::wants(Content content) const {
  return content == Content::x || content == Content::y || content == Content::z;
}

void NodesCheck::reals(const Block&, const Piece& piece, std::span<const float> values) {
  axis_.add<float>(piece, values, std::nullopt);
}

void NodesCheck::reals(const Block&, const Piece& piece, std::span<const double> values) {
  axis_.add<double>(piece, values, std::nullopt);
}

void NodesCheck::integer(const Block& block, std::int64_t value) {
  if (block.content != Content::node_count || value != 0) return;
  report(Kind::no_content, first_value(block), "nodes", "0");
}

void NodesCheck::end_block(const Block& block) {
  if (!wants(block.content)) return;
  for (const RealCheck::Tally& tally : {axis_.not_numbers(), axis_.infinite()}) {
    if (tally.count > 0) {
      report(Kind::coordinate_not_finite, tally.first, "finite numbers", axis_.share(tally));
    }
  }
  axis_ = {};
}

bool ElementsCheck::wants(Content content) const {
  return content == Content::element_types || content == Content::connectivity;
}

void ElementsCheck::integers(const Block& block, const Piece& piece, std::span<const std::int32_t> values) {
  if (block.content == Content::connectivity) {
    IndexRange{outline().bias, tables().nodes}.check(piece, values, Kind::element_node, reporter());
    return;
  }
  corners_ += sum_of_corners(CodeFamily::elements, piece, values, Kind::element_type, reporter());
  const auto flat = std::count_if(values.begin(), values.end(), is_flat);
  if (flat > 0 && flat_ == 0) {
    const auto first = std::find_if(values.begin(), values.end(), is_flat) - values.begin();
    first_flat_ = offset_of(piece, static_cast<std::size_t>(first));
  }
  flat_ += flat;
}

void ElementsCheck::integer(const Block& block, std::int64_t value) {
  if (block.content == Content::element_count && value == 0) {
    report(Kind::no_content, first_value(block), "elements", "0");
  }
  if (block.content == Content::connectivity_length && value != corners_) {
    report(Kind::connectivity_length, first_value(block), std::to_string(corners_), std::to_string(value));
  }
}

void ElementsCheck::end_block(const Block& block) {
  if (block.content != Content::element_types || flat_ == 0) return;
  report(Kind::flat_element, first_flat_, "solids", fmt::format("{} of {}", flat_, block.count));
}

bool MaterialsCheck::wants(Content content) const {
  return content == Content::materials;
}

void MaterialsCheck::integers(const Block&, const Piece& piece, std::span<const std::int32_t> values) {
  const auto [low, high] = std::minmax_element(values.begin(), values.end());
  const auto offset = [&](auto found) {
    return offset_of(piece, static_cast<std::size_t>(found - values.begin()));
  };
  if (*low < smallest_.value) smallest_ = {*low, offset(low)};
  if (*high > largest_.value) largest_ = {*high, offset(high)};
}

void MaterialsCheck::integer(const Block& block, std::int64_t value) {
  const auto& elements = tables().elements;
  if (block.content != Content::material_count || !elements || value == *elements) return;
  report(Kind::material_count, first_value(block), std::to_string(*elements), std::to_string(value));
}

void MaterialsCheck::end_block(const Block& block) {
  if (block.content != Content::materials || block.count == 0) return;
  const std::int64_t shift = smallest_.value < 0 ? 1 - smallest_.value : 0;
  if (largest_.value + shift <= kLargestMaterial) return;
  report(Kind::material_number, largest_.offset, fmt::format("at most {}", kLargestMaterial - shift),
         std::to_string(largest_.value));
}

}  // namespace inspect
