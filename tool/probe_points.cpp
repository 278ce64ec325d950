#include "tool/probe_points.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <fstream>
#include <string_view>
#include <system_error>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "tool/csv_table.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/interrupt.h"
#include "tool/number_range.h"
#include "tool/point_text.h"

namespace tool {
namespace {

constexpr std::size_t kMostLinePoints = 10'000'000;

// The fields of a line without the blanks and quotation marks around them.
std::vector<std::string> fields_of(const std::string& line) {
  const bool has_commas = line.find_first_of(",;\t") != std::string::npos;
  const char* separators = has_commas ? ",;\t" : " ";
  std::vector<std::string> fields;
  std::size_t from = 0;
  while (from <= line.size()) {
    const std::size_t end = std::min(line.find_first_of(separators, from), line.size());
    std::string_view field = std::string_view(line).substr(from, end - from);
    const auto is_around = [](char character) {
      return character == ' ' || character == '"' || character == '\r';
    };
    while (!field.empty() && is_around(field.front())) field.remove_prefix(1);
    while (!field.empty() && is_around(field.back())) field.remove_suffix(1);
    if (has_commas || !field.empty()) fields.emplace_back(field);
    from = end + 1;
  }
  return fields;
}

// Where x, y and z are among the names of columns; none if one is missing.
std::optional<std::array<std::size_t, 3>> find_columns(const std::vector<std::string>& names) {
  constexpr std::array<char, 3> kNames = {'x', 'y', 'z'};
  std::array<std::size_t, 3> columns{};
  for (std::size_t axis = 0; axis < columns.size(); ++axis) {
    const auto found = std::find_if(names.begin(), names.end(), [&](const std::string& name) {
      return name.size() == 1 && std::tolower(static_cast<unsigned char>(name.front())) == kNames[axis];
    });
    if (found == names.end()) return std::nullopt;
    columns[axis] = static_cast<std::size_t>(found - names.begin());
  }
  return columns;
}

}  // namespace

void add_point_options(CLI::App& command, PointOptions& options) {
  command.add_option("--at", options.at, "X,Y,Z: a point; may be given several times")
      ->allow_extra_args(false)
      ->type_name("POINT");
  CLI::Option* line =
      command.add_option("--line", options.line, "X,Y,Z:X,Y,Z: points along a line, its ends among them")
          ->type_name("POINTS")
          ->check(not_empty());
  command.add_option("--points", options.line_points, "How many points the line has (default: 101)")
      ->check(whole_number(2, kMostLinePoints))
      ->needs(line);
  command.add_option("--at-file", options.table, "The points of a table: columns x, y and z of a CSV file")
      ->check(file_name());
}

std::optional<double> ProbePoints::distance(std::size_t point) const {
  if (!line_from || point < *line_from || point >= line_end) return std::nullopt;
  return analysis::length(points[point] - points[*line_from]);
}

ProbePoints read_points(const PointOptions& options) {
  ProbePoints read;
  for (const std::string& text : options.at) read.points.push_back(point_of_option("--at", text));
  if (!options.line.empty()) {
    const PointPair ends = points_of_option("--line", options.line);
    read.line_from = read.points.size();
    const auto last = static_cast<double>(options.line_points - 1);
    for (std::size_t i = 0; i < options.line_points; ++i) {
      const double share = static_cast<double>(i) / last;
      read.points.push_back(i + 1 == options.line_points ? ends.second
                                                         : ends.first + share * (ends.second - ends.first));
    }
    read.line_end = read.points.size();
  }
  if (!options.table.empty()) {
    const std::vector<analysis::Vec3> table = read_point_table(options.table);
    read.points.insert(read.points.end(), table.begin(), table.end());
  }
  if (read.points.empty())
    throw CommandError(ExitStatus::usage, "there is no point: give --at, --line or --at-file");
  return read;
}

std::vector<analysis::Vec3> read_point_table(const std::string& path) {
  std::ifstream file(path);
  std::array<std::size_t, 3> columns = {0, 1, 2};
  std::vector<analysis::Vec3> points;
  bool is_first = true;
  std::size_t number = 0;
  for (std::string line; std::getline(file, line);) {
    stop_if_interrupted();
    if (++number == 1) remove_byte_order_mark(line);
    if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
    const std::vector<std::string> fields = fields_of(line);
    const bool may_be_names = std::exchange(is_first, false);
    if (may_be_names && !fields.empty() && !parse_real(fields.front())) {
      const auto named = find_columns(fields);
      if (!named) throw CommandError(ExitStatus::failure, path, "its first line names no columns x, y and z");
      columns = *named;
      continue;
    }
    analysis::Vec3 point{};
    for (std::size_t axis = 0; axis < point.size(); ++axis) {
      const std::string field = columns[axis] < fields.size() ? fields[columns[axis]] : "";
      const std::optional<double> value = parse_real(field);
      if (!value)
        throw CommandError(ExitStatus::failure, path,
                           fmt::format("line {}: '{}' is not a number", number, field));
      point[axis] = *value;
    }
    points.push_back(point);
  }
  if (is_first && !file.eof())
    throw CommandError(ExitStatus::failure, path,
                       "cannot read: " + std::generic_category().message(errno == 0 ? EIO : errno));
  if (points.empty()) throw CommandError(ExitStatus::failure, path, "there is no point in it");
  return points;
}

}  // namespace tool
