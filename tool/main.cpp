// fldtool: shows what is in FLD datasets, through the reader plug-in that other hosts load. This program has
// all commands of the build.
#include <string>

#include "CLI/CLI.hpp"
#include "tool/commands.h"
#include "tool/program.h"

namespace {

void add_commands(CLI::App& app, const std::string& /*first*/) {
  tool::add_inspecting_commands(app);
#ifdef FLDTOOL_HAS_VTK
  tool::add_probe_command(app);
  tool::add_history_command(app);
  tool::add_mean_command(app);
  tool::add_plot_command(app);
  tool::add_convert_command(app);
  tool::add_extract_command(app);
  tool::add_render_command(app);
#endif
#ifdef FLDTOOL_HAS_PAGE
  tool::add_page_command(app);
#endif
  tool::add_sample_command(app);
  tool::add_help_command(app);
}

}  // namespace

void tool::need_vtk() {}

int main(int argc, char** argv) {
  return tool::run_program(argc, argv, add_commands);
}
