// Writes charts into the file that a command line names.
#pragma once

#include <string>

#include "render/chart.h"
#include "tool/cli_names.h"

namespace tool {

// The options of charts.
struct ChartTexts {
  std::string output;  // .png or .svg; empty: no chart
  std::string title;
};

// Adds --plot to a command.
void add_plot_option(CLI::App& command, ChartTexts& texts);

// Throws CommandError (wrong usage) when the output's name is not that of a picture.
void check_chart_output(const std::string& path);

// "Static pressure [Pa]" for a name and label of a variable, or the name when there is no label.
std::string chart_title_of(const std::string& name, const std::string& label);

// Draws the chart and writes it. Throws CommandError when it cannot be written, or the chart has nothing to
// show or numbers beyond 1e300, and std::runtime_error when this machine cannot render.
void write_chart(const std::string& path, const render::Chart& chart,
                 const render::ChartOptions& options = {});

}  // namespace tool
