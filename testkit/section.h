// A titled stretch of a file (header item or section): a title and a list of blocks.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "testkit/block.h"

namespace testkit {

inline constexpr std::size_t kTitleLength = 32;

struct Title {
  Title() = default;
  Title(std::string title_text) : text(std::move(title_text)) {}
  Title(const char* title_text) : text(title_text) {}
  // A title record with exactly these bytes as payload.
  static Title exactly(std::string bytes);

  // The payload: the text, padded with blanks to 32 characters (not truncated).
  std::string payload() const;

  std::string text;
  bool is_padded = true;
  Markers markers;
};

struct Section {
  Title title{};
  std::vector<Block> blocks{};              // without the leading integer and the end rule
  std::optional<std::int32_t> leading = 0;  // the integer right after the title; header items have none
  std::optional<Rule> end_rule = kEndRule;
};

// A header item: no leading integer.
Section header_item(Title title, std::vector<Block> blocks);

}  // namespace testkit
