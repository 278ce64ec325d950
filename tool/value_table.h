// The values of a variable on a part, with coordinates, as a table: a row per node or element.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/session.h"
#include "tool/output.h"
#include "tool/progress.h"
#include "tool/row_range.h"

namespace tool {

struct ValueTable {
  // One column of numbers; the column's values are in the order of the nodes or elements.
  struct Column {
    std::string name;  // UTF-8 without control characters
    host::HostArray array;

    std::span<const float> values() const { return array.values(); }
  };

  std::string row_name;         // "node" or "element"; rows are numbered from 1
  std::vector<Column> columns;  // x, y, z, then the values
};

// The table of a variable on a part at the session's step; all components of a vector or the given one.
// Elements are numbered through the part's shapes in the order of the reader (tri, quad, tet, pyramid, prism,
// hex), and their coordinates are the means of their nodes'. Throws CommandError when there are no values.
ValueTable make_value_table(host::Session& session, int variable, int part, std::optional<int> component);

// Comma-separated: a header line, then per row of the range its number and the columns. A value that is
// undefined is left empty. `progress` is told how many rows are done.
void write_csv(const ValueTable& table, RowRange rows, Output& output, Progress& progress);

// NumPy's format 1.0: a float32 array of rows by columns, without the row numbers. A value that is undefined
// is NaN.
void write_npy(const ValueTable& table, RowRange rows, Output& output, Progress& progress);

}  // namespace tool
