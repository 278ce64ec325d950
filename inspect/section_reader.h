// Reads the blocks of a header item or section as its layout requires, passes them to a visitor and reports
// deviations.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "inspect/byte_reader.h"
#include "inspect/findings.h"
#include "inspect/pieces.h"
#include "inspect/record_reader.h"
#include "inspect/visitor.h"

namespace inspect {

inline constexpr std::int64_t kLabelLength = 32;

// The rest of the section cannot be read (already reported); the walk continues at the next title.
struct SectionLost {};
// The section ends before its layout is complete (already reported). `end` is the end rule, empty if missing.
struct SectionEnded {
  Record end{};
};

class SectionReader {
 public:
  SectionReader(ByteReader& reader, RecordReader& records, Reporter& reporter, Visitor& visitor)
      : reader_(reader), records_(records), reporter_(reporter), visitor_(visitor) {}

  void start();
  // From the header; determines the number of components of a vector. 3 by default.
  void set_dimension(std::int64_t dimension) { dimension_ = dimension; }
  std::int64_t dimension() const { return dimension_; }
  // Assigns the following blocks to a region of the section.
  void set_region(std::int64_t region) { region_ = region; }
  // The block being read, for findings.
  const Block& current() const { return current_; }

  // Each reads one block; `count` is what the layout requires. They throw SectionLost, SectionEnded and
  // FramingLost.
  std::int64_t integer(Content content);
  std::int64_t count(Content content);       // not negative
  std::int64_t long_count(Content content);  // in 4 or 8 bytes, not negative
  void integer_that_is(Content content, std::int64_t wanted, Kind otherwise);
  std::int64_t sum(Content content, std::int64_t count);  // of counts that are not negative
  void integers(Content content, std::int64_t count);
  void reals(Content content, std::int64_t count, std::int64_t width = 0);  // 0: 4 or 8
  std::string characters(Content content, std::int64_t count);              // the first 256 of them

  // Reads blocks of any kind up to the end rule.
  void anything();
  // Whether the next record is an end rule.
  bool is_at_end();
  // Reads the end rule.
  Record end();
  // Reports a finding about the current block and throws SectionLost.
  [[noreturn]] void give_up(Kind kind, std::string wanted, std::string found);

 private:
  // What the layout functions need of a block.
  struct Read {
    std::int64_t sum = 0;
    bool has_negative = false;
    std::string text{};
  };

  Read block(Content content, DataKind data, std::int64_t count, std::int64_t width = 0);
  void open_block(Content content, DataKind data, std::int64_t count);
  bool check_width(std::int64_t wanted);
  void check_counts();
  // Whether the rule announces one more record behind the last element. Such a record has no elements and is
  // read like any other.
  bool has_empty_record() const;
  void empty_record();
  void data_record(std::int64_t first, const Record& record, Read& read);
  void take_in(const Piece& piece, Read& read);
  void any_records();
  void report_exceeding(std::int64_t elements);
  void report(Kind kind, std::string wanted, std::string found);

  ByteReader& reader_;
  RecordReader& records_;
  Reporter& reporter_;
  Visitor& visitor_;
  std::int64_t dimension_ = 3;
  std::int64_t region_ = -1;
  Block current_{};
};

// The known title at an offset; none if there is no complete record with one.
std::optional<Title> known_title_at(ByteReader& reader, std::uint64_t offset);

}  // namespace inspect
