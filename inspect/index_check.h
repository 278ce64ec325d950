// Indices into tables, and codes of elements and faces.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "inspect/findings.h"
#include "inspect/pieces.h"

namespace inspect {

// The numbers that a table's entries have.
struct IndexRange {
  std::int32_t first = 0;             // the file's index base
  std::optional<std::int64_t> count;  // none: not known, so every index passes
  bool allows_none = false;           // -1 stands for no entry

  // Reports every index that is not in the table.
  void check(const Piece& piece, std::span<const std::int32_t> indices, Kind kind, Reporter& reporter) const;
};

enum class CodeFamily { elements, faces };

// The corners of all of these elements or faces together; reports every unknown code.
std::int64_t sum_of_corners(CodeFamily family, const Piece& piece, std::span<const std::int32_t> codes,
                            Kind kind, Reporter& reporter);

}  // namespace inspect
