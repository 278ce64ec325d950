// Checks of surface and volume regions. Sections that store their regions separately are checked as arrays of
// one region each.
#pragma once

#include <vector>

#include "inspect/index_check.h"
#include "inspect/name_check.h"
#include "inspect/section_check.h"

namespace inspect {

class SurfacesCheck : public SectionCheck {
 public:
  SurfacesCheck(const Surroundings& surroundings, std::int64_t region_set, Reporter& reporter)
      : SectionCheck(surroundings, region_set, reporter), names_(reporter) {}

  bool wants(Content content) const override;
  void integers(const Block& block, const Piece& piece, std::span<const std::int32_t> values) override;
  void characters(const Block&, const Piece& piece) override { names_.add(piece); }
  void integer(const Block& block, std::int64_t value) override;

 private:
  struct Region {
    std::int64_t faces = 0;
    std::int64_t corners = 0;
  };

  void take_counts(const Piece& piece, std::span<const std::int32_t> counts);
  void take_codes(const Piece& piece, std::span<const std::int32_t> codes);
  void compare_lengths(const Piece& piece, std::span<const std::int32_t> lengths);

  NameCheck names_;
  std::vector<Region> regions_;  // of the lists being read
  std::size_t region_ = 0;       // of the next face code
  std::int64_t done_ = 0;        // faces read of that region
};

class VolumesCheck : public SectionCheck {
 public:
  VolumesCheck(const Surroundings& surroundings, std::int64_t region_set, Reporter& reporter)
      : SectionCheck(surroundings, region_set, reporter), names_(reporter) {}

  bool wants(Content content) const override;
  void integers(const Block& block, const Piece& piece, std::span<const std::int32_t> values) override;
  void characters(const Block&, const Piece& piece) override { names_.add(piece); }
  void integer(const Block& block, std::int64_t value) override;

 private:
  NameCheck names_;
};

}  // namespace inspect
