#include "tool/csv_table.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <limits>
#include <string_view>
#include <system_error>
#include <utility>

#include "fmt/format.h"
#include "tool/exit_status.h"
#include "tool/interrupt.h"
#include "tool/point_text.h"

namespace tool {

std::vector<std::string> csv_fields(const std::string& line) {
  std::vector<std::string> fields(1);
  bool is_quoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char character = line[i];
    if (character == '"' && is_quoted && i + 1 < line.size() && line[i + 1] == '"') {
      fields.back() += line[++i];
    } else if (character == '"') {
      is_quoted = !is_quoted;
    } else if (character == ',' && !is_quoted) {
      fields.emplace_back();
    } else if (character != '\r') {
      fields.back() += character;
    }
  }
  return fields;
}

void remove_byte_order_mark(std::string& first_line) {
  constexpr std::string_view kMark = "\xef\xbb\xbf";
  if (first_line.starts_with(kMark)) first_line.erase(0, kMark.size());
}

std::optional<std::size_t> CsvTable::find(const std::string& name) const {
  const auto found = std::find(names.begin(), names.end(), name);
  if (found == names.end()) return std::nullopt;
  return static_cast<std::size_t>(found - names.begin());
}

CsvTable read_csv_table(const std::string& path) {
  errno = 0;
  std::ifstream file(path);
  CsvTable table;
  std::size_t number = 0;
  for (std::string line; std::getline(file, line);) {
    stop_if_interrupted();
    if (++number == 1) remove_byte_order_mark(line);
    if (line.empty() || line == "\r") continue;
    std::vector<std::string> fields = csv_fields(line);
    if (table.names.empty()) {
      table.columns.resize(fields.size());
      table.has_numbers.resize(fields.size(), false);
      table.names = std::move(fields);
      continue;
    }
    if (fields.size() != table.names.size()) {
      throw CommandError(ExitStatus::failure, path,
                         fmt::format("line {} has {} fields, and the first line has {}", number,
                                     fields.size(), table.names.size()));
    }
    for (std::size_t i = 0; i < fields.size(); ++i) {
      const std::optional<double> value = parse_real(fields[i]);
      table.columns[i].push_back(value.value_or(std::numeric_limits<double>::quiet_NaN()));
      if (value) table.has_numbers[i] = true;
    }
  }
  if (table.names.empty()) {
    throw CommandError(
        ExitStatus::failure, path,
        errno == 0 ? "there is no line in it" : "cannot read: " + std::generic_category().message(errno));
  }
  return table;
}

}  // namespace tool
