#include "inspect/region_checks.h"

#include <algorithm>

#include "fmt/format.h"

namespace inspect {
namespace {

// The number of regions whose lists are compared with each other, to bound memory.
constexpr std::size_t kMostRegions = 1000000;

bool is_name(Content content) {
  return content == Content::region_name || content == Content::region_names;
}

}  // namespace

bool SurfacesCheck::wants(Content content) const {
  switch (content) {
    case Content::face_count:
    case Content::face_types:
    case Content::face_links:
    case Content::face_node_count:
    case Content::face_nodes:
      return true;
    default:
      return is_name(content);
  }
}

void SurfacesCheck::integer(const Block& block, std::int64_t value) {
  if (block.content == Content::name_length) names_.set_length(value);
}

void SurfacesCheck::integers(const Block& block, const Piece& piece, std::span<const std::int32_t> values) {
  switch (block.content) {
    case Content::face_count:
      take_counts(piece, values);
      break;
    case Content::face_types:
      take_codes(piece, values);
      break;
    case Content::face_links:
      IndexRange{outline().bias, tables().elements, true}.check(piece, values, Kind::face_link, reporter());
      break;
    case Content::face_node_count:
      compare_lengths(piece, values);
      break;
    default:
      IndexRange{outline().bias, tables().nodes}.check(piece, values, Kind::face_node, reporter());
  }
}

void SurfacesCheck::take_counts(const Piece& piece, std::span<const std::int32_t> counts) {
  if (piece.first == 0) {
    regions_.clear();
    region_ = 0;
    done_ = 0;
  }
  for (std::size_t i = 0; i < counts.size() && regions_.size() < kMostRegions; ++i) {
    regions_.push_back({.faces = counts[i]});
    if (regions_.size() == kMostRegions) {
      report(Kind::too_many_regions, offset_of(piece, i), fmt::format("at most {}", kMostRegions), "more");
    }
  }
}

void SurfacesCheck::take_codes(const Piece& piece, std::span<const std::int32_t> codes) {
  Piece rest = piece;
  while (!codes.empty()) {
    while (region_ < regions_.size() && done_ == regions_[region_].faces) {
      ++region_;
      done_ = 0;
    }
    const bool is_kept = region_ < regions_.size();
    const auto left = is_kept ? static_cast<std::size_t>(regions_[region_].faces - done_) : codes.size();
    const std::size_t count = std::min(codes.size(), left);
    const std::int64_t corners =
        sum_of_corners(CodeFamily::faces, rest, codes.first(count), Kind::face_type, reporter());
    if (is_kept) regions_[region_].corners += corners;
    done_ += static_cast<std::int64_t>(count);
    codes = codes.subspan(count);
    rest.offset += count * 4;
  }
}

void SurfacesCheck::compare_lengths(const Piece& piece, std::span<const std::int32_t> lengths) {
  for (std::size_t i = 0; i < lengths.size(); ++i) {
    const std::size_t region = static_cast<std::size_t>(piece.first) + i;
    if (region >= regions_.size()) return;
    if (lengths[i] == regions_[region].corners) continue;
    report(Kind::face_list_length, offset_of(piece, i), std::to_string(regions_[region].corners),
           std::to_string(lengths[i]));
  }
}

bool VolumesCheck::wants(Content content) const {
  return is_name(content) || content == Content::region_elements;
}

void VolumesCheck::integer(const Block& block, std::int64_t value) {
  if (block.content == Content::name_length) names_.set_length(value);
}

void VolumesCheck::integers(const Block&, const Piece& piece, std::span<const std::int32_t> values) {
  IndexRange{outline().bias, tables().elements}.check(piece, values, Kind::volume_element, reporter());
}

}  // namespace inspect
