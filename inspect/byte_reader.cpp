#include "inspect/byte_reader.h"

#include <algorithm>
#include <array>

#include "inspect/big_endian.h"

namespace inspect {
namespace {

// A seek is often followed by a few bytes and the next seek, so read-ahead starts small and grows.
constexpr std::size_t kFirstReadAhead = 4096;

}  // namespace

Bytes ByteReader::take(std::uint64_t most, std::size_t unit) {
  const bool is_held = position_ >= start_ && position_ + unit <= start_ + held_;
  if (!is_held) fill(unit);
  const auto begin = static_cast<std::size_t>(position_ - start_);
  const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(most, held_ - begin));
  const std::size_t whole = count - count % unit;
  position_ += whole;
  return Bytes(buffer_).subspan(begin, whole);
}

void ByteReader::fill(std::size_t count) {
  const bool goes_on = position_ >= start_ && position_ <= start_ + held_ && held_ > 0;
  ahead_ = goes_on ? std::min(ahead_ * 4, kBuffer) : kFirstReadAhead;
  std::size_t kept = 0;
  if (goes_on) {
    const auto begin = static_cast<std::ptrdiff_t>(position_ - start_);
    kept = held_ - static_cast<std::size_t>(begin);
    std::copy(buffer_.begin() + begin, buffer_.begin() + static_cast<std::ptrdiff_t>(held_), buffer_.begin());
  }
  start_ = position_;
  if (progress_) progress_(position_, size());
  const std::size_t wanted = std::max(ahead_, count);
  held_ = static_cast<std::size_t>(std::min<std::uint64_t>(std::max(wanted, kept), remaining()));
  source_.read(start_ + kept, std::span(buffer_).subspan(kept, held_ - kept));
}

std::optional<std::int32_t> ByteReader::int32_at(std::uint64_t offset) {
  if (offset > size() || size() - offset < 4) return std::nullopt;
  if (offset >= start_ && offset + 4 <= start_ + held_) return load_int32(&buffer_[offset - start_]);
  std::array<unsigned char, 4> bytes{};
  source_.read(offset, bytes);
  return load_int32(bytes.data());
}

std::optional<std::string> ByteReader::text_at(std::uint64_t offset, std::size_t count) {
  if (offset > size() || size() - offset < count) return std::nullopt;
  std::vector<unsigned char> bytes(count);
  source_.read(offset, bytes);
  return std::string(bytes.begin(), bytes.end());
}

}  // namespace inspect
