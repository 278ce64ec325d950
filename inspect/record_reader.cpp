#include "inspect/record_reader.h"

#include "fmt/format.h"
#include "inspect/big_endian.h"

namespace inspect {

Record RecordReader::begin(std::uint64_t expected) {
  const std::int32_t marker = leading_marker();
  const bool is_expected = marker >= 0 && static_cast<std::uint64_t>(marker) == expected;
  if (is_expected && reader_.remaining() >= expected + 8) return started(expected);
  return odd_record(marker, expected);
}

Record RecordReader::begin_at_most(std::uint64_t expected, std::uint64_t unit) {
  const std::int32_t marker = leading_marker();
  const auto length = static_cast<std::uint64_t>(marker);
  if (marker < 0 || length >= expected || length % unit != 0 || !ends_after(length)) return begin(expected);
  return started(length);
}

Record RecordReader::begin_any() {
  const std::int32_t marker = leading_marker();
  const auto length = static_cast<std::uint64_t>(marker);
  if (marker < 0) lose(Kind::framing_lost, "a record", fmt::format("the marker {}", marker));
  if (reader_.remaining() < length + 8) return odd_record(marker, length);
  return started(length);
}

void RecordReader::end(const Record& record) {
  const std::uint64_t place = record.payload() + record.length;
  reader_.seek(place);
  const std::int32_t marker = load_int32(reader_.take(4, 4).data());
  if (marker >= 0 && static_cast<std::uint64_t>(marker) == record.length) return;
  reporter_.report(Kind::trailing_marker, place, std::to_string(record.length), std::to_string(marker));
}

bool RecordReader::ends_after(std::uint64_t length) {
  const auto trailing = reader_.int32_at(reader_.position() + 4 + length);
  return trailing && *trailing >= 0 && static_cast<std::uint64_t>(*trailing) == length;
}

std::int32_t RecordReader::leading_marker() {
  const std::uint64_t left = reader_.remaining();
  if (left < 4) lose(Kind::file_ends, "a record", left == 0 ? "the end" : fmt::format("{} bytes", left));
  const std::uint64_t place = reader_.position();
  const std::int32_t marker = load_int32(reader_.take(4, 4).data());
  reader_.seek(place);
  return marker;
}

Record RecordReader::odd_record(std::int32_t marker, std::uint64_t expected) {
  const auto length = static_cast<std::uint64_t>(marker);
  if (marker >= 0 && length != expected && ends_after(length)) {
    reporter_.report(Kind::record_length, reader_.position(), std::to_string(expected),
                     std::to_string(marker));
    return started(length);
  }
  if (ends_after(expected)) {
    reporter_.report(Kind::leading_marker, reader_.position(), std::to_string(expected),
                     std::to_string(marker));
    return started(expected);
  }
  if (marker >= 0 && reader_.remaining() < length + 8) {
    lose(Kind::record_beyond_end, fmt::format("{} bytes", length + 8),
         fmt::format("{} bytes", reader_.remaining()));
  }
  lose(Kind::framing_lost, fmt::format("a record of {} bytes", expected),
       fmt::format("the marker {}", marker));
}

Record RecordReader::started(std::uint64_t length) {
  const Record record{reader_.position(), length};
  reader_.seek(record.payload());
  return record;
}

void RecordReader::lose(Kind kind, std::string wanted, std::string found) {
  reporter_.report(kind, reader_.position(), std::move(wanted), std::move(found));
  throw FramingLost{reader_.position()};
}

}  // namespace inspect
