#include "inspect/outline.h"

#include "inspect/big_endian.h"

namespace inspect {

void OutlineTaker::title(const Title& title) {
  count_.reset();
  if (!title.is(TitleId::region_set)) return;
  if (outline_.region_set_count++ < kMostRegionSets) {
    outline_.region_sets.push_back({.offset = title.record.offset});
  }
}

bool OutlineTaker::wants_data(const Block& block) {
  return block.content == Content::time || block.content == Content::cycle ||
         block.content == Content::undefined_single || block.content == Content::undefined_double;
}

void OutlineTaker::data(const Block& block, const Piece& piece) {
  const unsigned char* bytes = piece.bytes.data();
  switch (block.content) {
    case Content::cycle:
      outline_.cycle_offset = piece.offset;
      break;
    case Content::time:
      outline_.time = block.width == 8 ? load<double>(bytes) : static_cast<double>(load<float>(bytes));
      outline_.time_offset = piece.offset;
      break;
    case Content::undefined_single:
      outline_.undefined_single = load<float>(bytes);
      break;
    default:
      outline_.undefined_double = load<double>(bytes);
  }
}

void OutlineTaker::integer(const Block& block, std::int64_t value) {
  switch (block.content) {
    case Content::bias:
      outline_.bias = static_cast<std::int32_t>(value);
      break;
    case Content::cycle:
      outline_.cycle = static_cast<std::int32_t>(value);
      break;
    case Content::node_count:
    case Content::element_count:
    case Content::base_cycle:
      count_ = value;
      break;
    default:
      break;
  }
}

void OutlineTaker::end_section(const Title& title, const Record& rule) {
  const bool is_whole = rule.length > 0;
  if (!is_whole || title.region_set < 0 || title.region_set >= kMostRegionSets) return;
  RegionSetOutline& set = outline_.region_sets[static_cast<std::size_t>(title.region_set)];
  if (title.is(TitleId::nodes)) set.nodes = count_;
  if (title.is(TitleId::elements)) set.elements = count_;
  if (title.is(TitleId::motion) && count_) set.base_cycle = static_cast<std::int32_t>(*count_);
}

}  // namespace inspect
