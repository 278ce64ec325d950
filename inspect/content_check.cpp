#include "inspect/content_check.h"

#include <iterator>

#include "inspect/big_endian.h"
#include "inspect/mesh_checks.h"
#include "inspect/motion_check.h"
#include "inspect/places.h"
#include "inspect/quantity_check.h"
#include "inspect/region_checks.h"

namespace inspect {

std::unique_ptr<SectionCheck> make_section_check(const Title& title, const Surroundings& surroundings,
                                                 Reporter& reporter) {
  const bool has_tables =
      title.region_set >= 0 && title.region_set < std::ssize(surroundings.outline.region_sets);
  if (title.info == nullptr || title.in_header || !has_tables) return nullptr;
  const std::int64_t set = title.region_set;
  switch (title.info->id) {
    case TitleId::coordinate_system:
      return std::make_unique<CoordinateSystemCheck>(surroundings, set, reporter);
    case TitleId::surfaces:
    case TitleId::surfaces_array:
      return std::make_unique<SurfacesCheck>(surroundings, set, reporter);
    case TitleId::volumes:
    case TitleId::volumes_array:
      return std::make_unique<VolumesCheck>(surroundings, set, reporter);
    case TitleId::elements:
      return std::make_unique<ElementsCheck>(surroundings, set, reporter);
    case TitleId::materials:
      return std::make_unique<MaterialsCheck>(surroundings, set, reporter);
    case TitleId::nodes:
      return std::make_unique<NodesCheck>(surroundings, set, reporter);
    case TitleId::motion:
      return std::make_unique<MotionCheck>(surroundings, set, reporter);
    case TitleId::scalar:
    case TitleId::vector:
      return std::make_unique<QuantityCheck>(surroundings, title, reporter);
    default:
      return nullptr;
  }
}

void ContentCheck::title(const Title& title) {
  title_ = title;
  block_ = {};
  section_ = make_section_check(title_, surroundings_, *this);
}

void ContentCheck::end_section(const Title& /*title*/, const Record& /*rule*/) {
  section_.reset();
}

bool ContentCheck::wants_data(const Block& block) {
  return section_ != nullptr && section_->wants(block.content);
}

void ContentCheck::data(const Block& block, const Piece& piece) {
  switch (block.data) {
    case DataKind::integer:
      load_all(piece.bytes, integers_);
      section_->integers(block, piece, integers_);
      break;
    case DataKind::real:
      if (block.width == 4) {
        load_all(piece.bytes, floats_);
        section_->reals(block, piece, std::span<const float>(floats_));
      } else {
        load_all(piece.bytes, doubles_);
        section_->reals(block, piece, std::span<const double>(doubles_));
      }
      break;
    default:
      section_->characters(block, piece);
  }
}

void ContentCheck::integer(const Block& block, std::int64_t value) {
  if (section_ != nullptr) section_->integer(block, value);
}

void ContentCheck::end_block(const Block& block) {
  if (section_ != nullptr) section_->end_block(block);
}

void ContentCheck::report(Kind kind, std::uint64_t offset, std::string wanted, std::string found) {
  findings_.add({kind, offset, place_of(title_, &block_), std::move(wanted), std::move(found)});
}

}  // namespace inspect
