// The values of variables on a part, with coordinates, as a table: a row per node or element.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "host/session.h"
#include "tool/choice.h"
#include "tool/coordinate_names.h"

namespace tool {

struct ValueTable {
  // One column of numbers; the column's values are in the order of the nodes or elements.
  struct Column {
    std::string name;  // UTF-8 without control characters
    host::HostArray array;

    std::span<const float> values() const { return array.values(); }
  };

  std::string row_name;              // "node" or "element"; rows are numbered from 1
  std::vector<Column> columns;       // three coordinates, then the values
  std::vector<std::string> missing;  // variables that the step lacks, in UTF-8; their columns are undefined
};

// Rows of a table, from 0.
struct RowRange {
  std::size_t first = 0;
  std::size_t end = 0;  // after the last one

  std::size_t size() const { return end - first; }
};

// How many rows a table has: the part's nodes or elements.
std::size_t row_count(const host::Variable& variable, const host::Part& part);

// The table of variables on a part at the session's step: of a vector all components, or the chosen one or
// the magnitude. All variables are given per node or all per element. Elements are numbered through the
// part's shapes in the order of the reader (tri, quad, tet, pyramid, prism, hex), and their coordinates are
// the means of their nodes'. `axes` name the coordinates. Throws
// CommandError when values cannot be read.
ValueTable make_value_table(host::Session& session, const std::vector<ChosenComponent>& chosen, int part,
                            const AxisNames& axes);

}  // namespace tool
