#include "tool/value_writer.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <iterator>
#include <limits>
#include <vector>

#include "fmt/format.h"
#include "host/text_encoding.h"
#include "host/undefined_value.h"
#include "tool/interrupt.h"
#include "tool/npy_header.h"

namespace tool {
namespace {

constexpr std::size_t kRowsPerBlock = 4096;

// Calls `add_rows(from, to)` for block after block of the rows. `done` counts the rows of all tables.
template <typename AddRows>
void for_each_block(RowRange rows, std::size_t& done, Progress& progress, AddRows add_rows) {
  for (std::size_t from = rows.first; from < rows.end; from += kRowsPerBlock) {
    stop_if_interrupted();
    progress.update(done);
    const std::size_t to = std::min(rows.end, from + kRowsPerBlock);
    add_rows(from, to);
    done += to - from;
  }
}

class CsvWriter : public ValueWriter {
 public:
  CsvWriter(OriginColumns origin, Output& output, Progress& progress)
      : origin_(origin), output_(output), progress_(progress) {}

  void add(const ValueTable& table, RowRange rows, const TableOrigin& origin) override {
    if (!has_header_) write_header(table);
    std::string before;
    if (origin_.step) before += fmt::format("{},", origin.step);
    if (origin_.part)
      before += fmt::format("{},{},", origin.part, csv_field(host::without_controls(origin.part_name)));
    fmt::memory_buffer text;
    for_each_block(rows, done_, progress_, [&](std::size_t from, std::size_t to) {
      text.clear();
      for (std::size_t row = from; row < to; ++row) {
        fmt::format_to(std::back_inserter(text), "{}{}", before, row + 1);
        for (const ValueTable::Column& column : table.columns) {
          const float value = column.values()[row];
          text.push_back(',');
          if (!host::is_undefined(value)) fmt::format_to(std::back_inserter(text), "{}", value);
        }
        text.push_back('\n');
      }
      output_.write({text.data(), text.size()});
    });
  }

 private:
  void write_header(const ValueTable& table) {
    std::string header;
    if (origin_.step) header += "step,";
    if (origin_.part) header += "part,name,";
    header += table.row_name;
    for (const ValueTable::Column& column : table.columns) header += "," + csv_field(column.name);
    output_.write(header + "\n");
    has_header_ = true;
  }

  OriginColumns origin_;
  Output& output_;
  Progress& progress_;
  bool has_header_ = false;
  std::size_t done_ = 0;
};

// The files are the same whatever machine writes them.
void to_little_endian(std::vector<float>& values) {
  if constexpr (std::endian::native == std::endian::big) {
    for (float& value : values)
      value = std::bit_cast<float>(__builtin_bswap32(std::bit_cast<std::uint32_t>(value)));
  }
}

class NpyWriter : public ValueWriter {
 public:
  NpyWriter(OriginColumns origin, std::size_t rows, Output& output, Progress& progress)
      : origin_(origin), rows_(rows), output_(output), progress_(progress) {}

  void add(const ValueTable& table, RowRange rows, const TableOrigin& origin) override {
    std::vector<float> before;
    if (origin_.step) before.push_back(static_cast<float>(origin.step));
    if (origin_.part) before.push_back(static_cast<float>(origin.part));
    if (!has_header_) output_.write(npy_header("<f4", rows_, before.size() + table.columns.size()));
    has_header_ = true;
    std::vector<float> block;
    for_each_block(rows, done_, progress_, [&](std::size_t from, std::size_t to) {
      block.clear();
      for (std::size_t row = from; row < to; ++row) {
        block.insert(block.end(), before.begin(), before.end());
        for (const ValueTable::Column& column : table.columns) {
          const float value = column.values()[row];
          block.push_back(host::is_undefined(value) ? std::numeric_limits<float>::quiet_NaN() : value);
        }
      }
      to_little_endian(block);
      output_.write({reinterpret_cast<const char*>(block.data()), block.size() * sizeof(float)});
    });
  }

 private:
  OriginColumns origin_;
  std::size_t rows_;
  Output& output_;
  Progress& progress_;
  bool has_header_ = false;
  std::size_t done_ = 0;
};

}  // namespace

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

std::unique_ptr<ValueWriter> make_csv_writer(OriginColumns origin, Output& output, Progress& progress) {
  return std::make_unique<CsvWriter>(origin, output, progress);
}

std::unique_ptr<ValueWriter> make_npy_writer(OriginColumns origin, std::size_t rows, Output& output,
                                             Progress& progress) {
  return std::make_unique<NpyWriter>(origin, rows, output, progress);
}

}  // namespace tool
