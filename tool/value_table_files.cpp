// The forms that a value table can be written in.
#include <algorithm>
#include <bit>
#include <iterator>
#include <limits>
#include <vector>

#include "fmt/format.h"
#include "host/undefined_value.h"
#include "tool/interrupt.h"
#include "tool/value_table.h"

namespace tool {
namespace {

constexpr std::size_t kRowsPerBlock = 4096;

// A name as a field of a comma-separated line.
std::string csv_field(const std::string& name) {
  if (name.find_first_of(",\"") == std::string::npos) return name;
  std::string quoted = "\"";
  for (const char character : name) {
    if (character == '"') quoted += '"';
    quoted += character;
  }
  quoted += '"';
  return quoted;
}

// Calls `add_rows(from, to)` for block after block of the rows.
template <typename AddRows>
void for_each_block(RowRange rows, Progress& progress, AddRows add_rows) {
  for (std::size_t from = rows.first; from < rows.end; from += kRowsPerBlock) {
    stop_if_interrupted();
    progress.update(from - rows.first);
    add_rows(from, std::min(rows.end, from + kRowsPerBlock));
  }
}

std::string npy_header(std::size_t rows, std::size_t columns) {
  // The header's length, with its 10 bytes in front, is a multiple of 64; the line end is its last byte.
  constexpr std::size_t kPreamble = 10;
  std::string dictionary =
      fmt::format("{{'descr': '<f4', 'fortran_order': False, 'shape': ({}, {}), }}", rows, columns);
  dictionary.append(63 - (kPreamble + dictionary.size()) % 64, ' ');
  dictionary += '\n';
  std::string header("\x93NUMPY\x01\x00", 8);
  header += static_cast<char>(dictionary.size() & 0xFF);
  header += static_cast<char>(dictionary.size() >> 8);
  return header + dictionary;
}

}  // namespace

void write_csv(const ValueTable& table, RowRange rows, Output& output, Progress& progress) {
  std::string header = table.row_name;
  for (const ValueTable::Column& column : table.columns) {
    header += ',';
    header += csv_field(column.name);
  }
  header += '\n';
  output.write(header);
  fmt::memory_buffer text;
  for_each_block(rows, progress, [&](std::size_t from, std::size_t to) {
    text.clear();
    for (std::size_t row = from; row < to; ++row) {
      fmt::format_to(std::back_inserter(text), "{}", row + 1);
      for (const ValueTable::Column& column : table.columns) {
        const float value = column.values()[row];
        text.push_back(',');
        if (!host::is_undefined(value)) fmt::format_to(std::back_inserter(text), "{}", value);
      }
      text.push_back('\n');
    }
    output.write({text.data(), text.size()});
  });
}

void write_npy(const ValueTable& table, RowRange rows, Output& output, Progress& progress) {
  static_assert(std::endian::native == std::endian::little,
                "the array is written in the order of this machine");
  output.write(npy_header(rows.size(), table.columns.size()));
  std::vector<float> block;
  for_each_block(rows, progress, [&](std::size_t from, std::size_t to) {
    block.clear();
    for (std::size_t row = from; row < to; ++row) {
      for (const ValueTable::Column& column : table.columns) {
        const float value = column.values()[row];
        block.push_back(host::is_undefined(value) ? std::numeric_limits<float>::quiet_NaN() : value);
      }
    }
    output.write({reinterpret_cast<const char*>(block.data()), block.size() * sizeof(float)});
  });
}

}  // namespace tool
