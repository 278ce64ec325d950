#include "tool/chart_output.h"

#include <algorithm>
#include <cmath>
#include <vtkObject.h>

#include "CLI/CLI.hpp"
#include "render/fonts.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/interrupt.h"
#include "tool/output.h"

namespace tool {
namespace {

// Beyond this the ends of axes, or the distance between them, overflow double precision.
constexpr double kLargestNumber = 1e300;

bool is_too_large(double value) {
  return std::isfinite(value) && std::abs(value) > kLargestNumber;
}

bool has_value(const render::ChartSeries& series) {
  return std::any_of(series.y.begin(), series.y.end(), [](double value) { return std::isfinite(value); });
}

}  // namespace

void add_plot_option(CLI::App& command, ChartTexts& texts) {
  command.add_option("--plot", texts.output, "Draw a chart into this .png or .svg file as well")
      ->check(file_name());
}

void check_chart_output(const std::string& path) {
  check_extension(path, {".png", ".svg"});
}

std::string chart_title_of(const std::string& name, const std::string& label) {
  return label.empty() ? name : label;
}

void write_chart(const std::string& path, const render::Chart& chart, const render::ChartOptions& options) {
  if (std::none_of(chart.series.begin(), chart.series.end(), has_value))
    throw CommandError(ExitStatus::failure, path, "there is no number to draw");
  for (const render::ChartSeries& series : chart.series) {
    if (std::any_of(series.x.begin(), series.x.end(), is_too_large) ||
        std::any_of(series.y.begin(), series.y.end(), is_too_large))
      throw CommandError(ExitStatus::failure, path, "numbers beyond 1e300 cannot be drawn");
  }
  vtkObject::GlobalWarningDisplayOff();  // errors are reported in one line
  render::ChartOptions choices = options;
  if (choices.font.empty()) choices.font = render::font_for(render::chart_texts(chart));
  std::string picture;
  {
    const ExitAtOnce while_vtk_works;
    picture =
        extension_of(path) == ".svg" ? render::chart_svg(chart, choices) : render::chart_png(chart, choices);
  }
  Output output(path);
  output.write(picture);
  output.finish();
}

}  // namespace tool
