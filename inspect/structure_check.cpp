#include "inspect/structure_check.h"

#include <algorithm>
#include <cmath>

#include "fmt/format.h"
#include "inspect/places.h"

namespace inspect {
namespace {

std::size_t index(TitleId id) {
  return static_cast<std::size_t>(id);
}

}  // namespace

void StructureCheck::title(const Title& title) {
  const bool is_boundary = title.is(TitleId::region_set) || title.is(TitleId::file_end);
  if (is_boundary) end_region_set();
  OutlineTaker::title(title);
  current_ = title;
  if (is_boundary) {
    is_in_region_set_ = title.is(TitleId::region_set);
    region_set_ = title;
    if (is_in_region_set_ && title.region_set == kMostRegionSets) {
      add(Kind::too_many_region_sets, title.record.offset, fmt::format("at most {}", kMostRegionSets),
          "more");
    }
    return;
  }
  has_sections_ = true;
  if (title.info == nullptr) return;
  const bool is_item = title.info->group == TitleGroup::header_item;
  std::bitset<32>& seen = is_item ? items_ : seen_;
  const bool has_name = title.is(TitleId::scalar) || title.is(TitleId::vector);
  const bool is_again = has_name ? quantities_.knows(title.text) : seen[index(title.info->id)];
  if (is_again) {
    add(is_item ? Kind::item_twice : Kind::section_twice, title.record.offset, "once", "again");
  }
  seen.set(index(title.info->id));
}

void StructureCheck::data(const Block& block, const Piece& piece) {
  OutlineTaker::data(block, piece);
  if (block.content == Content::time && !std::isfinite(outline().time)) {
    add(Kind::time_not_finite, piece.offset, "a finite number", fmt::format("{}", outline().time));
  }
}

void StructureCheck::integer(const Block& block, std::int64_t value) {
  OutlineTaker::integer(block, value);
  const std::uint64_t offset = first_value(block);
  const std::string found = std::to_string(value);
  if (block.content == Content::dimension && value == 2) add(Kind::dimension_two, offset, "3", found);
  if (block.content == Content::dimension && value != 2 && value != 3) {
    add(Kind::dimension_odd, offset, "3", found);
  }
  if (block.content == Content::bias && value != 0 && value != 1)
    add(Kind::bias_odd, offset, "0 or 1", found);
  if (block.content == Content::cycle && value < 0) add(Kind::cycle_negative, offset, "0 or more", found);
}

void StructureCheck::end_region_set() {
  if (is_in_region_set_) {
    const std::uint64_t offset = region_set_.record.offset;
    current_ = region_set_;
    if (!has_sections_) add(Kind::empty_region_set, offset, "sections", "none");
    if (opens_dataset_ && !has(TitleId::nodes)) add(Kind::no_nodes, offset, "LS_Nodes", "none");
    if (opens_dataset_ && has(TitleId::nodes) && !has(TitleId::elements)) {
      add(Kind::no_elements, offset, "LS_Elements", "none");
    }
    if (has(TitleId::elements) && !has(TitleId::materials)) {
      add(Kind::no_materials, offset, "LS_MatOfElements", "none");
    }
  }
  seen_.reset();
  quantities_.clear();
  has_sections_ = false;
  is_in_region_set_ = false;
}

void StructureCheck::finish(bool is_complete) {
  if (!is_complete) return;
  end_region_set();
  current_ = {};
  if (outline().region_set_count == 0) add(Kind::no_region_set, 0, "OverlapStart_", "none");
  if (opens_dataset_) check_largest_mesh();
  for (const TitleInfo& title : all_titles()) {
    const bool matters = title.id == TitleId::cycle || title.id == TitleId::unused ||
                         title.id == TitleId::bias || title.id == TitleId::dimension;
    if (matters && !items_[index(title.id)]) {
      add(Kind::no_header_item, 0, std::string(title.text), "none");
    }
  }
}

// Readers make their tables for the region set with the most nodes, the first of them.
void StructureCheck::check_largest_mesh() {
  const auto& sets = outline().region_sets;
  const auto nodes_of = [](const RegionSetOutline& set) { return set.nodes.value_or(0); };
  const auto largest = std::max_element(
      sets.begin(), sets.end(),
      [&](const RegionSetOutline& a, const RegionSetOutline& b) { return nodes_of(a) < nodes_of(b); });
  if (largest == sets.end() || nodes_of(*largest) == 0 || largest->elements.value_or(0) > 0) return;
  findings_.add({Kind::no_elements_in_largest, largest->offset,
                 fmt::format("region set {}", largest - sets.begin()), "elements", "none"});
}

void StructureCheck::add(Kind kind, std::uint64_t offset, std::string wanted, std::string found) {
  findings_.add({kind, offset, place_of(current_), std::move(wanted), std::move(found)});
}

}  // namespace inspect
