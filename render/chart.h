// Line and bar charts as PNG or SVG files.
#pragma once

#include <string>
#include <vector>

namespace render {

// A line through points, or a bar per point. A value that is NaN leaves a gap.
struct ChartSeries {
  std::string name;  // UTF-8
  std::vector<double> x;
  std::vector<double> y;
};

enum class ChartKind { lines, bars };

struct Chart {
  ChartKind kind = ChartKind::lines;
  std::string title;    // UTF-8, as the next two; may be empty
  std::string x_title;  // with the unit
  std::string y_title;
  std::vector<ChartSeries> series;
};

struct ChartOptions {
  int width = 1200;  // of the picture, in pixels
  int height = 800;
  std::string font;  // file of the font for all texts; empty: VTK's own
};

// All texts of a chart, for the choice of a font.
std::string chart_texts(const Chart& chart);

// The chart as the bytes of a PNG file. Throws std::runtime_error when this machine cannot render.
std::string chart_png(const Chart& chart, const ChartOptions& options);

// The chart as the text of an SVG file. Throws like chart_png, and when no temporary file can be written.
std::string chart_svg(const Chart& chart, const ChartOptions& options);

}  // namespace render
