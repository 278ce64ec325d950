// Checks of nodes, elements, material numbers and the coordinate system.
#pragma once

#include <limits>

#include "inspect/index_check.h"
#include "inspect/real_check.h"
#include "inspect/section_check.h"

namespace inspect {

class CoordinateSystemCheck : public SectionCheck {
 public:
  using SectionCheck::SectionCheck;
  bool wants(Content) const override { return false; }
  void integer(const Block& block, std::int64_t value) override;
};

class NodesCheck : public SectionCheck {
 public:
  using SectionCheck::SectionCheck;
  bool wants(Content content) const override;
  void reals(const Block& block, const Piece& piece, std::span<const float> values) override;
  void reals(const Block& block, const Piece& piece, std::span<const double> values) override;
  void integer(const Block& block, std::int64_t value) override;
  void end_block(const Block& block) override;

 private:
  RealCheck axis_;
};

class ElementsCheck : public SectionCheck {
 public:
  using SectionCheck::SectionCheck;
  bool wants(Content content) const override;
  void integers(const Block& block, const Piece& piece, std::span<const std::int32_t> values) override;
  void integer(const Block& block, std::int64_t value) override;
  void end_block(const Block& block) override;

 private:
  std::int64_t corners_ = 0;
  std::int64_t flat_ = 0;
  std::uint64_t first_flat_ = 0;
};

class MaterialsCheck : public SectionCheck {
 public:
  using SectionCheck::SectionCheck;
  bool wants(Content content) const override;
  void integers(const Block& block, const Piece& piece, std::span<const std::int32_t> values) override;
  void integer(const Block& block, std::int64_t value) override;
  void end_block(const Block& block) override;

 private:
  struct Extreme {
    std::int64_t value = 0;
    std::uint64_t offset = 0;
  };
  Extreme smallest_{std::numeric_limits<std::int64_t>::max(), 0};
  Extreme largest_{std::numeric_limits<std::int64_t>::min(), 0};
};

}  // namespace inspect
