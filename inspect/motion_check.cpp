#include "inspect/motion_check.h"

#include <algorithm>
#include <cmath>

#include "inspect/text_check.h"

namespace inspect {
namespace {

constexpr std::size_t kMaxName = 1024;  // characters of a name that are compared

}  // namespace

bool MotionCheck::wants(Content content) const {
  return content == Content::moved_name || content == Content::action_kind || content == Content::item;
}

void MotionCheck::integer(const Block& block, std::int64_t value) {
  if (block.content == Content::base_cycle) find_base(block, static_cast<std::int32_t>(value));
}

void MotionCheck::find_base(const Block& block, std::int32_t cycle) {
  if (!surroundings().knows_series) return;
  base_ = surroundings().motion_base(cycle, region_set());
  if (!base_) {
    report(Kind::base_cycle_missing, first_value(block), "a cycle of the series", std::to_string(cycle));
  } else if (!base_->has_nodes) {
    report(Kind::base_without_nodes, first_value(block), "a file with nodes", std::to_string(cycle));
  }
}

void MotionCheck::characters(const Block&, const Piece& piece) {
  if (piece.first == 0) {
    text_.clear();
    text_offset_ = piece.offset;
  }
  const std::size_t count = std::min(piece.bytes.size(), kMaxName - text_.size());
  text_.append(piece.bytes.begin(), piece.bytes.begin() + static_cast<std::ptrdiff_t>(count));
}

void MotionCheck::end_block(const Block& block) {
  if (block.content == Content::moved_name) check_name(text_offset_);
  if (block.content == Content::action_kind) {
    kind_ = text_;
    item_ = 0;
  }
}

void MotionCheck::check_name(std::uint64_t offset) {
  const std::string name(without_padding(text_));
  if (!is_text(name)) report(Kind::name_not_text, offset, "text", in_quotes(name));
  if (!base_ || !base_->has_nodes || !base_->volume_names) return;
  const auto& volumes = *base_->volume_names;
  // A name refers to the volume regions whose names are prefixes of it.
  const bool is_there = std::any_of(volumes.begin(), volumes.end(),
                                    [&](const std::string& volume) { return name.starts_with(volume); });
  if (!is_there) report(Kind::moves_nothing, offset, "a volume region", in_quotes(name));
}

void MotionCheck::reals(const Block&, const Piece& piece, std::span<const float> values) {
  take_item(piece, values);
}

void MotionCheck::reals(const Block&, const Piece& piece, std::span<const double> values) {
  take_item(piece, values);
}

template <class Real>
void MotionCheck::take_item(const Piece& piece, std::span<const Real> values) {
  const auto odd = std::find_if_not(values.begin(), values.end(), [](Real v) { return std::isfinite(v); });
  if (odd != values.end()) {
    const auto i = static_cast<std::size_t>(odd - values.begin());
    report(Kind::motion_not_finite, offset_of(piece, i, sizeof(Real)), "finite numbers",
           std::to_string(*odd));
  }
  const bool is_axis = kind_.starts_with("Rotate") && item_ == 1;
  const bool is_zero = std::all_of(values.begin(), values.end(), [](Real v) { return v == Real(0); });
  if (is_axis && is_zero) report(Kind::axis_without_length, piece.offset, "an axis", "(0, 0, 0)");
  ++item_;
}

}  // namespace inspect
