// A stretch of the rows of a table.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace tool {

struct RowRange {
  std::size_t first = 0;  // from 0
  std::size_t end = 0;    // behind the last one

  std::size_t size() const { return end - first; }
};

// "3-7" or "3": rows as people count them, from 1 and with the last one. None when the text is something else
// or there are no such rows among so many.
std::optional<RowRange> parse_rows(std::string_view text, std::size_t count);

}  // namespace tool
