// fldtool: shows what is in FLD datasets, through the reader plug-in that other hosts load.
#include <exception>
#include <fcntl.h>
#include <string>
#include <unistd.h>

#include "CLI/CLI.hpp"
#include "host/text_encoding.h"
#include "tool/best_effort_write.h"
#include "tool/command_line.h"
#include "tool/commands.h"
#include "tool/exit_status.h"
#include "tool/interrupt.h"

namespace {

// The exit status counts even when the message cannot be written.
int report(tool::ExitStatus status, const std::string& message) {
  tool::write_if_possible(STDERR_FILENO, "fldtool: " + host::without_controls(message) + "\n");
  return static_cast<int>(status);
}

// Opens descriptors 0 to 2 if they are closed, so that no other file gets their numbers; writing to them then
// fails.
void open_standard_streams() {
  int descriptor = 0;
  while (descriptor >= 0 && descriptor <= STDERR_FILENO) descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC);
  if (descriptor >= 0) close(descriptor);
}

int run(int argc, char** argv) {
  CLI::App app("Inspects, compares, converts and draws FLD result files (version 4) of CFD solvers",
               "fldtool");
  app.set_version_flag("--version", "fldtool " FLDTOOL_VERSION, "Print the version and exit");
  app.set_help_flag("-h,--help", "Print this help and exit");
  app.set_help_all_flag("--help-all", "Print the help of all commands and exit");
  app.require_subcommand(0, 1);
  app.footer(std::string("'fldtool help COMMAND' prints the manual of a command.\n\n") +
             tool::kExitStatusText);
  tool::add_info_command(app);
  tool::add_stats_command(app);
  tool::add_values_command(app);
  tool::add_integrate_command(app);
  tool::add_diff_command(app);
  tool::add_layout_command(app);
  tool::add_check_command(app);
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
  try {
    tool::run_command_line(app, argc, argv);
    return static_cast<int>(tool::ExitStatus::ok);
  } catch (const tool::QuietExit& exit) {
    return static_cast<int>(exit.status());
  } catch (const tool::CommandError& error) {
    return report(error.status(), error.what());
  }
}

}  // namespace

int main(int argc, char** argv) {
  open_standard_streams();
  tool::catch_interrupts();
  try {
    return run(argc, argv);
  } catch (const tool::Interrupted& interruption) {
    return report(tool::ExitStatus::interrupted, interruption.what());
  } catch (const std::exception& error) {
    return report(tool::ExitStatus::failure, error.what());
  }
}
