// The forms in which tables of values are written: comma-separated lines and NumPy files.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "tool/output.h"
#include "tool/progress.h"
#include "tool/value_table.h"

namespace tool {

// Which columns precede those of the tables.
struct OriginColumns {
  bool step = false;
  bool part = false;  // in a NumPy file the number, else the number and the name
};

// Where a table comes from.
struct TableOrigin {
  int step = 0;
  int part = 0;
  std::string part_name;  // UTF-8
};

// Writes tables with the same columns one after the other.
class ValueWriter {
 public:
  virtual ~ValueWriter() = default;

  // Adds rows of the table. Throws CommandError when they cannot be written.
  virtual void add(const ValueTable& table, RowRange rows, const TableOrigin& origin) = 0;
};

// Comma-separated: a header line, then per row its origin, its number and the columns. A value that is
// undefined is left empty. `progress` is told how many rows are done.
std::unique_ptr<ValueWriter> make_csv_writer(OriginColumns origin, Output& output, Progress& progress);

// NumPy's format 1.0: a float32 array of `rows` rows, without the row numbers. A value that is undefined is
// NaN.
std::unique_ptr<ValueWriter> make_npy_writer(OriginColumns origin, std::size_t rows, Output& output,
                                             Progress& progress);

// A name as a field of a comma-separated line.
std::string csv_field(const std::string& name);

}  // namespace tool
