#include "testkit/record_writer.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

#include "testkit/big_endian.h"

namespace testkit {
namespace {

constexpr std::int64_t kPiece = 1 << 15;  // values converted at a time
constexpr std::int64_t kLargestPayload = std::numeric_limits<std::int32_t>::max();

std::int32_t narrowed(std::int64_t value) {
  if (value > std::numeric_limits<std::int32_t>::max())
    throw std::length_error("too large for a rule record");
  return static_cast<std::int32_t>(value);
}

template <class Value>
void shift_indices(std::span<Value> values, IndexBase base, std::int32_t shift) {
  if (base == IndexBase::kNone || shift == 0) return;
  for (Value& value : values) {
    if (base == IndexBase::kAllButMinusOne && value == Value(-1)) continue;
    value += static_cast<Value>(shift);
  }
}

// Elements per full data record.
std::int64_t elements_per_record(const Block& block, std::int64_t split) {
  if (block.per_record > 0) return block.per_record;
  const std::int64_t largest = kLargestPayload / block.width;
  return std::min(block.size(), split > 0 ? std::min(split, largest) : largest);
}

}  // namespace

void RecordWriter::version(std::int32_t version) {
  record(big_endian(version));
}

void RecordWriter::rule(const Rule& rule) {
  record(big_endian(rule.width) + big_endian(rule.per_record) + big_endian(rule.n_records));
}

void RecordWriter::record(std::string_view payload, const Markers& markers) {
  marker(static_cast<std::int64_t>(payload.size()), markers.leading);
  sink_.write(payload);
  marker(static_cast<std::int64_t>(payload.size()), markers.trailing);
}

void RecordWriter::block(const Block& block, std::int32_t shift, std::int64_t split) {
  if (std::holds_alternative<std::string>(block.data)) {
    characters(block);
    return;
  }
  if (block.width != 4 && block.width != 8) throw std::invalid_argument("numbers are stored in 4 or 8 bytes");
  std::visit(
      [&](const auto& source) {
        if constexpr (!std::is_same_v<std::decay_t<decltype(source)>, std::string>) {
          numbers(source, block, shift, split);
        }
      },
      block.data);
}

void RecordWriter::characters(const Block& block) {
  const auto& bytes = std::get<std::string>(block.data);
  const auto size = static_cast<std::int64_t>(bytes.size());
  const std::int64_t per_record = block.per_record > 0 ? block.per_record : size;
  const std::int64_t n_records = size == 0 ? 0 : (size + per_record - 1) / per_record;
  if (block.has_rule) rule(block.rule.value_or(Rule{block.width, narrowed(per_record), narrowed(n_records)}));
  if (!block.is_framed) {
    raw(bytes);
    return;
  }
  for (std::int64_t first = 0; first < size; first += per_record) {
    record(
        std::string_view(bytes).substr(static_cast<std::size_t>(first), static_cast<std::size_t>(per_record)),
        block.markers);
  }
}

template <class Value>
void RecordWriter::numbers(const Source<Value>& source, const Block& block, std::int32_t shift,
                           std::int64_t split) {
  const std::int64_t size = source.size();
  const std::int64_t per_record = elements_per_record(block, split);
  const std::int64_t n_records = size == 0 ? 0 : (size + per_record - 1) / per_record;
  if (block.has_rule) rule(block.rule.value_or(Rule{block.width, narrowed(per_record), narrowed(n_records)}));
  for (std::int64_t first = 0; first < size; first += per_record) {
    const std::int64_t count = std::min(per_record, size - first);
    if (block.is_framed) marker(count * block.width, block.markers.leading);
    if (source.is_hole()) {
      sink_.skip(static_cast<std::uint64_t>(count * block.width));
    } else if constexpr (std::is_floating_point_v<Value>) {
      if (block.width == 4) {
        values<float>(source, first, count, block.index_base, shift);
      } else {
        values<double>(source, first, count, block.index_base, shift);
      }
    } else {
      if (block.width == 4) {
        values<std::int32_t>(source, first, count, block.index_base, shift);
      } else {
        values<std::int64_t>(source, first, count, block.index_base, shift);
      }
    }
    if (block.is_framed) marker(count * block.width, block.markers.trailing);
  }
}

template <class Stored, class Value>
void RecordWriter::values(const Source<Value>& source, std::int64_t first, std::int64_t count, IndexBase base,
                          std::int32_t shift) {
  std::vector<Value> piece(static_cast<std::size_t>(std::min(count, kPiece)));
  for (std::int64_t done = 0; done < count; done += kPiece) {
    const auto length = static_cast<std::size_t>(std::min(count - done, kPiece));
    const auto out = std::span(piece).first(length);
    source.read(first + done, out);
    shift_indices(out, base, shift);
    stored_.resize(length * sizeof(Stored));
    store_big_endian<Stored, Value>(out, stored_.data());
    sink_.write({stored_.data(), stored_.size()});
  }
}

void RecordWriter::marker(std::int64_t payload_size, const std::optional<std::int32_t>& wrong) {
  sink_.write(big_endian(wrong ? *wrong : narrowed(payload_size)));
}

}  // namespace testkit
