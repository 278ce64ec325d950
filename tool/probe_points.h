// The points that `fldtool probe` and `history` ask at: single ones, along a line, from a table.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "analysis/vec3.h"
#include "tool/cli_names.h"

namespace tool {

struct PointOptions {
  std::vector<std::string> at;  // X,Y,Z each
  std::string line;             // X,Y,Z:X,Y,Z
  std::size_t line_points = 101;
  std::string table;  // path
};

// Adds --at, --line, --points and --at-file to a command.
void add_point_options(CLI::App& command, PointOptions& options);

struct ProbePoints {
  std::vector<analysis::Vec3> points;    // in the order of the options: --at, --line, --at-file
  std::optional<std::size_t> line_from;  // the first one of the line, if there is a line

  // How far a point of the line is from its beginning; none for other points.
  std::optional<double> distance(std::size_t point) const;
  std::size_t line_end = 0;  // behind the last one of the line
};

// Throws CommandError (wrong usage) for what is not a point, or when there is none; (failure) for a table
// that cannot be read.
ProbePoints read_points(const PointOptions& options);

// The points of a table of comma-separated lines: those of its columns x, y and z when its first line names
// them, or else of its first three. Blanks, semicolons and tabs separate too; empty lines do not count.
std::vector<analysis::Vec3> read_point_table(const std::string& path);

}  // namespace tool
