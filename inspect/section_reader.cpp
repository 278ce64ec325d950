#include "inspect/section_reader.h"

#include <algorithm>

#include "fmt/format.h"
#include "inspect/big_endian.h"
#include "inspect/text_check.h"

namespace inspect {
namespace {

constexpr std::uint64_t kRuleLength = 12;
constexpr std::size_t kKeptText = 256;

std::string in_words(const Rule& rule) {
  return fmt::format("width {}, {} per record, {} records", rule.width, rule.per_record, rule.n_records);
}

std::string in_words(const Block& block) {
  return fmt::format("{} elements of width {}", block.count, block.width);
}

// Whether the content is a count of what follows.
bool is_count(Content content) {
  switch (content) {
    case Content::region_count:
    case Content::name_length:
    case Content::face_count:
    case Content::face_node_count:
    case Content::region_element_count:
    case Content::element_count:
    case Content::connectivity_length:
    case Content::material_count:
    case Content::node_count:
    case Content::value_count:
    case Content::moving_region_count:
    case Content::moved_name_count:
    case Content::action_count:
      return true;
    default:
      return false;
  }
}

std::int64_t load_integer(const Piece& piece, std::int64_t width, std::size_t i) {
  const unsigned char* bytes = piece.bytes.data() + i * static_cast<std::size_t>(width);
  return width == 8 ? load<std::int64_t>(bytes) : load_int32(bytes);
}

}  // namespace

std::optional<Title> known_title_at(ByteReader& reader, std::uint64_t offset) {
  if (reader.int32_at(offset) != std::int32_t{kTitleLength}) return std::nullopt;
  const auto bytes = reader.text_at(offset + 4, kTitleLength);
  if (!bytes || reader.int32_at(offset + 4 + kTitleLength) != std::int32_t{kTitleLength}) return std::nullopt;
  Title title{.record = {offset, kTitleLength}, .text = std::string(without_padding(*bytes))};
  title.info = find_title(title.text);
  return title.info == nullptr ? std::nullopt : std::optional(title);
}

void SectionReader::start() {
  region_ = -1;
  current_ = {};
}

std::int64_t SectionReader::integer(Content content) {
  return block(content, DataKind::integer, 1).sum;
}

std::int64_t SectionReader::count(Content content) {
  return sum(content, 1);
}

std::int64_t SectionReader::long_count(Content content) {
  const Read read = block(content, DataKind::long_integer, 1);
  if (read.has_negative) throw SectionLost{};
  return read.sum;
}

void SectionReader::integer_that_is(Content content, std::int64_t wanted, Kind otherwise) {
  const std::int64_t value = integer(content);
  if (value != wanted) give_up(otherwise, std::to_string(wanted), std::to_string(value));
}

std::int64_t SectionReader::sum(Content content, std::int64_t count) {
  const Read read = block(content, DataKind::integer, count);
  if (read.has_negative) throw SectionLost{};
  return read.sum;
}

void SectionReader::integers(Content content, std::int64_t count) {
  block(content, DataKind::integer, count);
}

void SectionReader::reals(Content content, std::int64_t count, std::int64_t width) {
  block(content, DataKind::real, count, width);
}

std::string SectionReader::characters(Content content, std::int64_t count) {
  return block(content, DataKind::characters, count).text;
}

void SectionReader::open_block(Content content, DataKind data, std::int64_t count) {
  current_ = {.content = content, .data = data, .count = count, .region = region_};
  current_.record.offset = reader_.position();
  if (const auto title = known_title_at(reader_, reader_.position())) {
    report(Kind::no_end_rule, "a rule", "the title " + in_quotes(title->text));
    throw SectionEnded{};
  }
  current_.record = records_.begin(kRuleLength);
  if (current_.record.length != kRuleLength) {
    records_.end(current_.record);
    throw SectionLost{};
  }
  const Bytes bytes = reader_.take(kRuleLength, kRuleLength);
  current_.rule = {load_int32(bytes.data()), load_int32(&bytes[4]), load_int32(&bytes[8])};
  records_.end(current_.record);
  const Rule& rule = current_.rule;
  if (rule.width < 0 || rule.per_record < 0 || rule.n_records < 0 ||
      (rule.n_records > 0 && (rule.width == 0 || rule.per_record == 0))) {
    give_up(Kind::rule_fields, "no field below 0, elements in the records", in_words(rule));
  }
}

SectionReader::Read SectionReader::block(Content content, DataKind data, std::int64_t count,
                                         std::int64_t width) {
  open_block(content, data, count);
  if (current_.rule.is_end()) {
    report(Kind::section_ends_early, "a block: " + std::string(name(content)), "the end rule");
    throw SectionEnded{current_.record};
  }
  if (!check_width(width)) throw SectionLost{};
  check_counts();
  visitor_.begin_block(current_);
  Read read;
  const std::int64_t per_record = current_.rule.per_record;
  for (std::int64_t first = 0; first < count; first += per_record) {
    const std::int64_t elements = std::min(per_record, count - first);
    const auto length = static_cast<std::uint64_t>(elements * current_.width);
    const Record record = records_.begin(length);
    if (record.length == length) data_record(first, record, read);
    records_.end(record);
    if (record.length != length) throw SectionLost{};
    visitor_.record(current_, record, elements);
  }
  if (has_empty_record()) empty_record();
  if (count == 1 && data != DataKind::real && data != DataKind::characters) {
    visitor_.integer(current_, read.sum);
  }
  if (data == DataKind::characters) visitor_.characters(current_, read.text);
  visitor_.end_block(current_);
  return read;
}

bool SectionReader::check_width(std::int64_t wanted) {
  const std::int32_t width = current_.rule.width;
  current_.width = width;
  const auto is_one_of = [&](std::int64_t a, std::int64_t b) {
    if (width == a || width == b) return true;
    report(Kind::block_width, a == b ? std::to_string(a) : fmt::format("{} or {}", a, b),
           std::to_string(width));
    return false;
  };
  switch (current_.data) {
    case DataKind::integer:
      return is_one_of(4, 4);
    case DataKind::long_integer:
      return is_one_of(4, 8);
    case DataKind::real:
      return wanted == 0 ? is_one_of(4, 8) : is_one_of(wanted, wanted);
    default:
      return is_one_of(1, 1);
  }
}

void SectionReader::check_counts() {
  const Rule& rule = current_.rule;
  const std::int64_t count = current_.count;
  const bool is_text = current_.data == DataKind::characters;
  const std::int64_t per_record = rule.per_record;
  // Avoids overflow: the count may be any number.
  const std::int64_t records = count == 0 || per_record == 0 ? 0 : (count - 1) / per_record + 1;
  if ((rule.n_records != records && !has_empty_record()) || (count > 0 && records == 0) ||
      (is_text && count > 0 && per_record != count)) {
    give_up(Kind::block_count, in_words(current_), in_words(rule));
  }
  if (per_record > count && count > 0) report_exceeding(count);
}

bool SectionReader::has_empty_record() const {
  const std::int64_t per_record = current_.rule.per_record;
  return current_.data != DataKind::characters && per_record > 0 && current_.count % per_record == 0 &&
         current_.rule.n_records == current_.count / per_record + 1;
}

void SectionReader::empty_record() {
  const std::uint64_t place = reader_.position();
  if (reader_.int32_at(place) != 0 || reader_.int32_at(place + 4) != 0)
    give_up(Kind::block_count, in_words(current_), in_words(current_.rule));
  const Record record = records_.begin(0);
  records_.end(record);
  visitor_.record(current_, record, 0);
}

void SectionReader::data_record(std::int64_t first, const Record& record, Read& read) {
  // Lists that nobody needs are skipped; counts, single integers and texts are always read.
  const bool is_own = current_.data == DataKind::characters || is_count(current_.content) ||
                      (current_.count == 1 && current_.data == DataKind::integer);
  const bool is_wanted = visitor_.wants_data(current_);
  if (!is_own && !is_wanted) return;
  const auto width = static_cast<std::size_t>(current_.width);
  for (std::uint64_t left = record.length; left > 0;) {
    Piece piece{.offset = reader_.position(), .first = first};
    piece.bytes = reader_.take(left, width);
    if (is_own) take_in(piece, read);
    if (is_wanted) visitor_.data(current_, piece);
    left -= piece.bytes.size();
    first += static_cast<std::int64_t>(piece.bytes.size() / width);
  }
}

void SectionReader::take_in(const Piece& piece, Read& read) {
  if (current_.data == DataKind::characters) {
    const std::size_t count = std::min(piece.bytes.size(), kKeptText - read.text.size());
    read.text.append(piece.bytes.begin(), piece.bytes.begin() + static_cast<std::ptrdiff_t>(count));
    return;
  }
  const auto width = static_cast<std::size_t>(current_.width);
  for (std::size_t i = 0; i < piece.bytes.size() / width; ++i) {
    const std::int64_t value = load_integer(piece, current_.width, i);
    if (value < 0 && is_count(current_.content)) {
      reporter_.report(Kind::negative_count, piece.offset + i * width, "0 or more", std::to_string(value));
      read.has_negative = true;
    }
    read.sum += value;
  }
}

void SectionReader::anything() {
  while (!is_at_end()) {
    open_block(Content::data, DataKind::any, -1);
    current_.width = current_.rule.width;
    visitor_.begin_block(current_);
    any_records();
    visitor_.end_block(current_);
  }
}

void SectionReader::any_records() {
  const Rule& rule = current_.rule;
  const auto width = static_cast<std::uint64_t>(rule.width);
  const std::uint64_t full = width * static_cast<std::uint64_t>(rule.per_record);
  std::int64_t elements = 0;
  for (std::int32_t k = 1; k <= rule.n_records; ++k) {
    const bool is_last = k == rule.n_records;
    const Record record = is_last ? records_.begin_at_most(full, width) : records_.begin(full);
    if (record.length > full || (!is_last && record.length != full)) {
      records_.end(record);
      throw SectionLost{};
    }
    Read read;
    data_record(elements, record, read);
    records_.end(record);
    const auto count = static_cast<std::int64_t>(record.length / width);
    visitor_.record(current_, record, count);
    elements += count;
  }
  if (rule.per_record > elements && elements > 0) report_exceeding(elements);
}

bool SectionReader::is_at_end() {
  const std::uint64_t place = reader_.position();
  if (reader_.int32_at(place) != std::int32_t{kRuleLength}) return false;
  return reader_.int32_at(place + 4) == 0 && reader_.int32_at(place + 8) == 0 &&
         reader_.int32_at(place + 12) == 0;
}

Record SectionReader::end() {
  open_block(Content::data, DataKind::any, 0);
  if (!current_.rule.is_end()) give_up(Kind::section_goes_on, "the end rule", in_words(current_.rule));
  return current_.record;
}

void SectionReader::give_up(Kind kind, std::string wanted, std::string found) {
  report(kind, std::move(wanted), std::move(found));
  throw SectionLost{};
}

void SectionReader::report_exceeding(std::int64_t elements) {
  report(Kind::rule_exceeds_block, fmt::format("at most {} per record", elements),
         std::to_string(current_.rule.per_record));
}

void SectionReader::report(Kind kind, std::string wanted, std::string found) {
  reporter_.report(kind, current_.record.offset, std::move(wanted), std::move(found));
}

}  // namespace inspect
