#include "tests/faults/damage.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <limits>
#include <stdexcept>

namespace faults {
namespace {

constexpr std::size_t kWord = 4;

std::int32_t word_at(const std::string& bytes, std::size_t offset) {
  std::uint32_t word = 0;
  for (std::size_t i = 0; i < kWord; ++i) word = word << 8 | static_cast<unsigned char>(bytes[offset + i]);
  return static_cast<std::int32_t>(word);
}

void put_word(std::string& bytes, std::size_t offset, std::int32_t value) {
  const auto word = static_cast<std::uint32_t>(value);
  for (std::size_t i = 0; i < kWord; ++i) {
    bytes[offset + i] = static_cast<char>(word >> (8 * (kWord - 1 - i)) & 0xFFU);
  }
}

// The offsets of all record markers.
std::vector<std::size_t> marker_offsets(const std::string& bytes) {
  std::vector<std::size_t> offsets;
  for (std::size_t at = 0; at < bytes.size();) {
    const auto length = static_cast<std::size_t>(word_at(bytes, at));
    const std::size_t trailing = at + kWord + length;
    if (trailing + kWord > bytes.size())
      throw std::logic_error("a file without damage has records to its end");
    offsets.insert(offsets.end(), {at, trailing});
    at = trailing + kWord;
  }
  return offsets;
}

}  // namespace

std::string Truncations::damaged(std::size_t number) const {
  return bytes_.substr(0, number);
}

std::string Truncations::describe(std::size_t number) const {
  return "cut off at byte " + std::to_string(number);
}

std::string BitFlips::damaged(std::size_t number) const {
  std::string bytes = bytes_;
  bytes[number / 8] = static_cast<char>(bytes[number / 8] ^ (1 << number % 8));
  return bytes;
}

std::string BitFlips::describe(std::size_t number) const {
  return "bit " + std::to_string(number % 8) + " of byte " + std::to_string(number / 8) + " flipped";
}

WordChanges WordChanges::extremes(const std::string& bytes) {
  WordChanges words(bytes);
  if (bytes.size() % kWord != 0) throw std::logic_error("the file does not consist of words");
  using Limits = std::numeric_limits<std::int32_t>;
  for (std::size_t at = 0; at < bytes.size(); at += kWord) {
    const auto rest = static_cast<std::int32_t>(bytes.size() - at - kWord);
    for (const std::int32_t value : {0, 1, -1, Limits::min(), Limits::max(), rest - 1, rest, rest + 1}) {
      if (value != word_at(bytes, at)) words.changes_.push_back({at, value});
    }
  }
  return words;
}

WordChanges WordChanges::markers(const std::string& bytes) {
  WordChanges words(bytes);
  for (const std::size_t at : marker_offsets(bytes)) {
    const std::int32_t length = word_at(bytes, at);
    const auto reversed = static_cast<std::int32_t>(__builtin_bswap32(static_cast<std::uint32_t>(length)));
    for (const std::int32_t value :
         {length + 1, length - 1, length + 4, length - 4, 2 * length, -length, reversed}) {
      if (value != length) words.changes_.push_back({at, value});
    }
  }
  return words;
}

std::string WordChanges::damaged(std::size_t number) const {
  std::string bytes = bytes_;
  put_word(bytes, changes_[number].offset, changes_[number].value);
  return bytes;
}

std::string WordChanges::describe(std::size_t number) const {
  const Change& change = changes_[number];
  return "word at byte " + std::to_string(change.offset) + " changed from " +
         std::to_string(word_at(bytes_, change.offset)) + " to " + std::to_string(change.value);
}

std::string SectionMoves::damaged(std::size_t number) const {
  const testkit::Place& place = places_.all[number / 3];
  const std::string stretch = bytes_.substr(place.offset, place.end - place.offset);
  std::string bytes = bytes_;
  switch (number % 3) {
    case 0:
      return bytes.erase(place.offset, stretch.size());
    case 1:
      return bytes.insert(place.end, stretch);
    default:
      break;
  }
  const std::size_t first_set = places_.of("OverlapStart_1").offset;
  bytes.erase(place.offset, stretch.size());
  return bytes.insert(std::min<std::size_t>(first_set, bytes.size()), stretch);
}

std::string SectionMoves::describe(std::size_t number) const {
  static constexpr std::array<const char*, 3> kWhat = {" left out", " doubled",
                                                       " moved before the first region set"};
  const testkit::Place& place = places_.all[number / 3];
  return "\"" + place.title + "\" of region set " + std::to_string(place.region_set) + kWhat[number % 3];
}

}  // namespace faults
