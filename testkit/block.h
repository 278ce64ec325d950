// One data block of a file: a rule record (width, elements per record, number of records) and its data
// records. The rule and the markers can be made wrong on purpose or left out.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "testkit/source.h"

namespace testkit {

// Bytes of one floating-point value; also the width in the rule record.
enum class Precision : std::int32_t { kSingle = 4, kDouble = 8 };

struct Rule {
  std::int32_t width = 0;
  std::int32_t per_record = 0;
  std::int32_t n_records = 0;

  friend bool operator==(const Rule&, const Rule&) = default;
};

// Closes every section and header item.
inline constexpr Rule kEndRule{};

// Values for a record's markers, instead of the length of the payload.
struct Markers {
  std::optional<std::int32_t> leading;
  std::optional<std::int32_t> trailing;
};

// Which integers of a block the file's index base is added to: none, all, or all but -1.
enum class IndexBase { kNone, kAll, kAllButMinusOne };

struct Block {
  std::variant<Ints, Longs, Reals, std::string> data;
  std::int32_t width = 4;       // bytes of one element as stored
  std::int64_t per_record = 0;  // elements per full data record; 0: as many as fit into one record
  IndexBase index_base = IndexBase::kNone;
  std::optional<Rule> rule;  // written instead of the correct one; the data records do not change
  bool has_rule = true;
  bool is_framed = true;  // data records have markers; otherwise only the bytes
  Markers markers;        // of the data records

  // Integers stored in 4 bytes.
  static Block integer(std::int32_t value);
  static Block integers(Ints values, IndexBase index_base = IndexBase::kNone);
  // Integers stored in `width` bytes, 4 or 8.
  static Block long_integer(std::int64_t value, std::int32_t width = 8);
  static Block long_integers(Longs values, std::int32_t width = 8);
  static Block real(double value, Precision precision = Precision::kSingle);
  static Block reals(Reals values, Precision precision = Precision::kSingle);
  // One record of characters: the text, truncated or padded with blanks to `length`.
  static Block characters(std::string_view text, std::size_t length);
  static Block characters(std::string_view text) { return characters(text, text.size()); }

  // A rule record without data, a data record without a rule, bytes without framing.
  static Block rule_alone(Rule rule);
  static Block record_alone(std::string bytes);
  static Block raw(std::string bytes);

  std::int64_t size() const;

  // The same block split into records of `per_record` elements, or with another rule record.
  Block cut(std::int64_t elements_per_record) const;
  Block with_rule(Rule wrong_rule) const;
};

// `text` truncated or padded with blanks to `length` characters.
std::string padded(std::string_view text, std::size_t length);

}  // namespace testkit
