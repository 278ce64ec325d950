// Checks the values in the lists of a file. Memory does not grow with the lists.
#pragma once

#include <memory>
#include <vector>

#include "inspect/findings.h"
#include "inspect/section_check.h"
#include "inspect/visitor.h"

namespace inspect {

class ContentCheck : public Visitor, private Reporter {
 public:
  ContentCheck(const Surroundings& surroundings, Findings& findings)
      : surroundings_(surroundings), findings_(findings) {}

  void title(const Title& title) override;
  void end_section(const Title& title, const Record& rule) override;
  void begin_block(const Block& block) override { block_ = block; }
  bool wants_data(const Block& block) override;
  void data(const Block& block, const Piece& piece) override;
  void integer(const Block& block, std::int64_t value) override;
  void end_block(const Block& block) override;

 private:
  void report(Kind kind, std::uint64_t offset, std::string wanted, std::string found) override;
  bool only_counts(Kind kind) const override { return findings_.has_enough(kind); }
  void count(Kind kind, std::uint64_t more) override { findings_.count_more(kind, more); }

  const Surroundings& surroundings_;
  Findings& findings_;
  std::unique_ptr<SectionCheck> section_;
  Title title_{};
  Block block_{};
  std::vector<std::int32_t> integers_;
  std::vector<float> floats_;
  std::vector<double> doubles_;
};

}  // namespace inspect
