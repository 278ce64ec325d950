// Checks of a scalar or vector.
#pragma once

#include "inspect/real_check.h"
#include "inspect/section_check.h"

namespace inspect {

class QuantityCheck : public SectionCheck {
 public:
  QuantityCheck(const Surroundings& surroundings, const Title& title, Reporter& reporter);

  bool wants(Content content) const override;
  void reals(const Block& block, const Piece& piece, std::span<const float> values) override;
  void reals(const Block& block, const Piece& piece, std::span<const double> values) override;
  void characters(const Block& block, const Piece& piece) override;
  void integer(const Block& block, std::int64_t value) override;
  void end_block(const Block& block) override;

 private:
  RealCheck component_;
};

}  // namespace inspect
