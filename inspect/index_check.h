// Checks of indices into tables and of element and face codes.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "inspect/findings.h"
#include "inspect/pieces.h"

namespace inspect {

// The valid indices into a table.
struct IndexRange {
  std::int32_t first = 0;             // the file's index base
  std::optional<std::int64_t> count;  // none: unknown, every index is accepted
  bool allows_none = false;           // whether -1 is accepted as "no entry"

  // Reports every index that is out of range.
  void check(const Piece& piece, std::span<const std::int32_t> indices, Kind kind, Reporter& reporter) const;
};

enum class CodeFamily { elements, faces };

// The total number of nodes of these elements or faces; reports every unknown code.
std::int64_t sum_of_corners(CodeFamily family, const Piece& piece, std::span<const std::int32_t> codes,
                            Kind kind, Reporter& reporter);

}  // namespace inspect
