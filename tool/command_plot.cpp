// fldtool plot
#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "host/text_encoding.h"
#include "tool/chart_output.h"
#include "tool/commands.h"
#include "tool/csv_table.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/picture_size.h"
#include "tool/suggestions.h"

namespace tool {
namespace {

constexpr char kPlotManual[] =
    R"(Draws the columns of tables as a chart with axes and a legend: tables of 'fldtool history' and 'fldtool probe --line', or
any CSV file whose first line names its columns. With several tables the chart shows them all, so that datasets can be
compared; the legend names the table then. A value that is missing leaves a gap.

--x is the column along the horizontal axis: without it 'distance' when there is one, or else 'time', or else the first
column. --y are the columns to draw, by name, and may be given several times; without it all columns with numbers but those
that say where a row is from (step, time, point, x, y, z, distance, found, region_set, element, part). Where a table of
probe has several steps, or points in several places, each step is a line of its own.

The chart is a PNG or an SVG file, by the name of --output. 'fldtool history', 'fldtool probe --line' and
'fldtool stats --histogram' draw the same charts at once with --plot.

)";

struct PlotOptions {
  std::vector<std::string> files;
  std::string x;
  std::vector<std::string> y;
  std::string output;
  std::string title;
  std::string x_title;
  std::string y_title;
  std::string size = "1200x800";
  bool bars = false;
};

constexpr std::array<const char*, 11> kPlaces = {"step", "time",     "point", "x",          "y",      "z",
                                                 "part", "distance", "found", "region_set", "element"};

bool is_place(const std::string& name) {
  return std::find(kPlaces.begin(), kPlaces.end(), name) != kPlaces.end();
}

std::size_t column_of(const CsvTable& table, const std::string& file, const std::string& name) {
  const auto found = table.find(name);
  if (found) return *found;
  throw CommandError(ExitStatus::usage, file,
                     fmt::format("there is no column '{}'", name) + suggestion("; ", name, table.names));
}

std::size_t x_column(const CsvTable& table, const std::string& file, const std::string& wanted) {
  if (!wanted.empty()) return column_of(table, file, wanted);
  for (const char* usual : {"distance", "time"}) {
    if (const auto found = table.find(usual)) return *found;
  }
  return 0;
}

std::vector<std::size_t> y_columns(const CsvTable& table, const std::string& file,
                                   const std::vector<std::string>& wanted, std::size_t x) {
  std::vector<std::size_t> columns;
  for (const std::string& name : wanted) columns.push_back(column_of(table, file, name));
  if (!wanted.empty()) return columns;
  for (std::size_t i = 0; i < table.names.size(); ++i) {
    if (i != x && table.has_numbers[i] && !is_place(table.names[i])) columns.push_back(i);
  }
  if (columns.empty())
    throw CommandError(ExitStatus::failure, file, "there is no column with numbers to draw");
  return columns;
}

// The rows of each step of a table along a line; all rows when they are not along one.
std::vector<std::vector<std::size_t>> rows_of_lines(const CsvTable& table, std::size_t x) {
  std::vector<std::vector<std::size_t>> lines;
  const auto step = table.find("step");
  const bool is_along_line = table.names[x] == "distance" && step;
  const std::size_t rows = table.columns.front().size();
  for (std::size_t row = 0; row < rows; ++row) {
    const bool begins = lines.empty() || (is_along_line && table.columns[*step][row] !=
                                                               table.columns[*step][lines.back().front()]);
    if (begins) lines.emplace_back();
    lines.back().push_back(row);
  }
  return lines;
}

void add_table(const PlotOptions& options, const std::string& file, render::Chart& chart) {
  const CsvTable table = read_csv_table(file);
  const std::size_t x = x_column(table, file, options.x);
  const auto lines = rows_of_lines(table, x);
  for (const std::size_t y : y_columns(table, file, options.y, x)) {
    for (const std::vector<std::size_t>& rows : lines) {
      render::ChartSeries& series = chart.series.emplace_back();
      series.name = host::without_controls(host::message_to_utf8(table.names[y]));
      if (lines.size() > 1)
        series.name += fmt::format(", step {}", table.columns[*table.find("step")][rows.front()]);
      if (options.files.size() > 1) {
        const std::string stem = std::filesystem::path(file).stem().string();
        series.name += fmt::format(" ({})", host::without_controls(host::message_to_utf8(stem)));
      }
      for (const std::size_t row : rows) {
        series.x.push_back(table.columns[x][row]);
        series.y.push_back(table.columns[y][row]);
      }
    }
  }
  if (chart.x_title.empty()) chart.x_title = host::without_controls(host::message_to_utf8(table.names[x]));
}

void run_plot(const PlotOptions& options) {
  check_chart_output(options.output);
  const auto size = picture_size("plot", options.size);
  render::Chart chart;
  chart.kind = options.bars ? render::ChartKind::bars : render::ChartKind::lines;
  chart.title = host::without_controls(host::message_to_utf8(options.title));
  chart.x_title = host::without_controls(host::message_to_utf8(options.x_title));
  for (const std::string& file : options.files) add_table(options, file, chart);
  chart.y_title = host::without_controls(host::message_to_utf8(options.y_title));
  if (chart.y_title.empty() && chart.series.size() == 1) chart.y_title = chart.series.front().name;
  write_chart(options.output, chart, {size[0], size[1], {}});
}

}  // namespace

void add_plot_command(CLI::App& app) {
  const auto options = std::make_shared<PlotOptions>();
  CLI::App* command = app.add_subcommand("plot", "Draw tables as a chart");
  command->add_option("FILE", options->files, "The tables: CSV files")->required()->check(file_name());
  command->add_option("-o,--output", options->output, "The .png or .svg file to write; - is standard output")
      ->required()
      ->check(file_name());
  command->add_option("--x", options->x, "The column along the horizontal axis")->check(not_empty());
  command->add_option("--y", options->y, "A column to draw; may be given several times")
      ->allow_extra_args(false);
  command->add_flag("--bars", options->bars, "Draw bars in place of lines");
  command->add_option("--title", options->title, "The title of the chart");
  command->add_option("--x-title", options->x_title,
                      "The title of the horizontal axis (default: its column)");
  command->add_option("--y-title", options->y_title, "The title of the vertical axis");
  command->add_option("--size", options->size, "WIDTHxHEIGHT in pixels")->default_str(options->size);
  command->footer(std::string(kPlotManual) + kExitStatusText);
  command->callback([options] { run_plot(*options); });
}

}  // namespace tool
