// Records, titles and blocks of a file. Offsets are in bytes from the start of the file.
#pragma once

#include <cstdint>
#include <string>

#include "inspect/byte_source.h"
#include "inspect/contents.h"
#include "inspect/titles.h"

namespace inspect {

// A payload between two 4-byte markers.
struct Record {
  std::uint64_t offset = 0;  // of the leading marker
  std::uint64_t length = 0;  // of the payload

  std::uint64_t payload() const { return offset + 4; }
  std::uint64_t end() const { return offset + 8 + length; }
  std::uint64_t size() const { return 8 + length; }
};

struct Title {
  Record record{};
  std::string text{};               // without trailing blanks
  const TitleInfo* info = nullptr;  // null if unknown
  std::int64_t region_set = -1;     // from 0; -1 before the first one
  bool in_header = false;

  bool is(TitleId id) const { return info != nullptr && info->id == id; }
};

struct Rule {
  std::int32_t width = 0;
  std::int32_t per_record = 0;
  std::int32_t n_records = 0;

  bool is_end() const { return width == 0 && per_record == 0 && n_records == 0; }
};

enum class DataKind : std::uint8_t { integer, long_integer, real, characters, any };

struct Block {
  Record record{};  // of the rule
  Rule rule{};
  Content content = Content::data;
  DataKind data = DataKind::any;
  std::int64_t width = 0;    // bytes of an element
  std::int64_t count = -1;   // elements that the layout of the section requires; -1: any number
  std::int64_t region = -1;  // in a section that stores its regions separately; otherwise -1
};

// The offset of a block's first value: after the rule record and a marker.
inline std::uint64_t first_value(const Block& block) {
  return block.record.end() + 4;
}

// Consecutive complete elements of a block.
struct Piece {
  std::uint64_t offset = 0;  // of the first byte
  std::int64_t first = 0;    // index of the first element in the block
  Bytes bytes{};
};

}  // namespace inspect
