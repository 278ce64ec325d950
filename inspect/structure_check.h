// The checks that need no lists: findings of the walk itself, order and number of titles, values of the
// header. Collects the outline of the file at the same time.
#pragma once

#include <bitset>
#include <cstdint>
#include <string>
#include <string_view>

#include "inspect/findings.h"
#include "inspect/outline.h"
#include "inspect/text_check.h"

namespace inspect {

class StructureCheck : public OutlineTaker {
 public:
  // `opens_dataset`: the first file of a dataset needs a mesh in every region set.
  StructureCheck(Findings& findings, bool opens_dataset)
      : findings_(findings), opens_dataset_(opens_dataset) {}

  // To be called after the walk. Missing sections are reported only after a complete walk.
  void finish(bool is_complete);

  void title(const Title& title) override;
  void data(const Block& block, const Piece& piece) override;
  void integer(const Block& block, std::int64_t value) override;
  void problem(const Finding& finding) override { findings_.add(finding); }

 private:
  bool has(TitleId id) const { return seen_[static_cast<std::size_t>(id)]; }
  void end_region_set();
  void check_largest_mesh();
  void add(Kind kind, std::uint64_t offset, std::string wanted, std::string found);

  Findings& findings_;
  bool opens_dataset_;
  std::bitset<32> items_;  // titles of the header, by TitleId
  std::bitset<32> seen_;   // titles of the region set
  NameSet quantities_;
  Title current_{};
  Title region_set_{};  // being read
  bool is_in_region_set_ = false;
  bool has_sections_ = false;
};

}  // namespace inspect
