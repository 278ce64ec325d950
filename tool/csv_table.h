// Reads tables of comma-separated lines.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tool {

// The fields of a line. A field in quotation marks may hold commas, and twice the mark for one.
std::vector<std::string> csv_fields(const std::string& line);

// Takes off what some programs write in front of the first line of a text in UTF-8.
void remove_byte_order_mark(std::string& first_line);

struct CsvTable {
  std::vector<std::string> names;            // of the columns
  std::vector<std::vector<double>> columns;  // NaN where a field is empty or no number
  std::vector<bool> has_numbers;             // per column, whether some field is a number

  // The number of the column with this name; none without one.
  std::optional<std::size_t> find(const std::string& name) const;
};

// The first line has the names. Throws CommandError (failure) when the file cannot be read, has no line, or a
// line has another number of fields.
CsvTable read_csv_table(const std::string& path);

}  // namespace tool
