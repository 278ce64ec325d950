// Checks of the motion of regions.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "inspect/section_check.h"

namespace inspect {

class MotionCheck : public SectionCheck {
 public:
  using SectionCheck::SectionCheck;

  bool wants(Content content) const override;
  void integer(const Block& block, std::int64_t value) override;
  void characters(const Block& block, const Piece& piece) override;
  void reals(const Block& block, const Piece& piece, std::span<const float> values) override;
  void reals(const Block& block, const Piece& piece, std::span<const double> values) override;
  void end_block(const Block& block) override;

 private:
  template <class Real>
  void take_item(const Piece& piece, std::span<const Real> values);
  void find_base(const Block& block, std::int32_t cycle);
  void check_name(std::uint64_t offset);

  std::optional<MotionBase> base_;
  std::string text_;               // the name or kind of action being read
  std::uint64_t text_offset_ = 0;  // of its first character
  std::string kind_;               // of the action
  int item_ = 0;                   // of the action
};

}  // namespace inspect
