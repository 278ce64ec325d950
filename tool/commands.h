// The commands of fldtool. Each function adds one to the command line; running it throws CommandError or
// another exception when it cannot do its work.
#pragma once

#include "tool/cli_names.h"

namespace tool {

void add_check_command(CLI::App& app);
void add_convert_command(CLI::App& app);  // only in builds with VTK
void add_diff_command(CLI::App& app);
void add_extract_command(CLI::App& app);  // only in builds with VTK
void add_help_command(CLI::App& app);
void add_history_command(CLI::App& app);  // only in builds with VTK
void add_info_command(CLI::App& app);
void add_integrate_command(CLI::App& app);
void add_layout_command(CLI::App& app);
void add_mean_command(CLI::App& app);    // only in builds with VTK
void add_page_command(CLI::App& app);    // only in builds with VTK and node
void add_plot_command(CLI::App& app);    // only in builds with VTK
void add_probe_command(CLI::App& app);   // only in builds with VTK
void add_render_command(CLI::App& app);  // only in builds with VTK
void add_sample_command(CLI::App& app);
void add_stats_command(CLI::App& app);
void add_values_command(CLI::App& app);

}  // namespace tool
