// One data block of a file: a rule record (width, elements per record, number of records) and the data
// records it announces. Everything about it can be made wrong on purpose: the rule, the markers, the presence
// of either.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "testkit/source.h"

namespace testkit {

// Bytes of one floating-point value; also the width that the rule record gives.
enum class Precision : std::int32_t { kSingle = 4, kDouble = 8 };

struct Rule {
  std::int32_t width = 0;
  std::int32_t per_record = 0;
  std::int32_t n_records = 0;

  friend bool operator==(const Rule&, const Rule&) = default;
};

// Closes every section and header item.
inline constexpr Rule kEndRule{};

// Values for a record's markers in place of the payload's true length.
struct Markers {
  std::optional<std::int32_t> leading;
  std::optional<std::int32_t> trailing;
};

// How the file's index base acts on the integers of a block: not at all, on every value, or on all but -1.
enum class IndexBase { kNone, kAll, kAllButMinusOne };

struct Block {
  std::variant<Ints, Longs, Reals, std::string> data;
  std::int32_t width = 4;       // bytes of one element as stored
  std::int64_t per_record = 0;  // elements per full data record; 0: as many as go into one record
  IndexBase index_base = IndexBase::kNone;
  std::optional<Rule> rule;  // written in place of the true one; the data records stay as they are
  bool has_rule = true;
  bool is_framed = true;  // data records between markers; otherwise the bare bytes
  Markers markers;        // of the data records

  // Integers stored in 4 bytes.
  static Block integer(std::int32_t value);
  static Block integers(Ints values, IndexBase index_base = IndexBase::kNone);
  // Integers stored in `width` bytes, 4 or 8.
  static Block long_integer(std::int64_t value, std::int32_t width = 8);
  static Block long_integers(Longs values, std::int32_t width = 8);
  static Block real(double value, Precision precision = Precision::kSingle);
  static Block reals(Reals values, Precision precision = Precision::kSingle);
  // One record of characters: the text, cut or filled up with blanks to `length`.
  static Block characters(std::string_view text, std::size_t length);
  static Block characters(std::string_view text) { return characters(text, text.size()); }

  // Odd ones: a rule record without data, a data record without a rule, bytes without any framing.
  static Block rule_alone(Rule rule);
  static Block record_alone(std::string bytes);
  static Block raw(std::string bytes);

  std::int64_t size() const;

  // The same block with its records cut at `per_record` elements, or with another rule record.
  Block cut(std::int64_t elements_per_record) const;
  Block with_rule(Rule wrong_rule) const;
};

// `text` cut or filled up with blanks to `length` characters.
std::string padded(std::string_view text, std::size_t length);

}  // namespace testkit
