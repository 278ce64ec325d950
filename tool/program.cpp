#include "tool/program.h"

#include <exception>
#include <fcntl.h>
#include <unistd.h>

#include "CLI/CLI.hpp"
#include "host/text_encoding.h"
#include "tool/best_effort_write.h"
#include "tool/command_line.h"
#include "tool/commands.h"
#include "tool/interrupt.h"

namespace tool {
namespace {

// Opens descriptors 0 to 2 if they are closed, so that no other file gets their numbers; writing to them then
// fails.
void open_standard_streams() {
  int descriptor = 0;
  while (descriptor >= 0 && descriptor <= STDERR_FILENO) descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC);
  if (descriptor >= 0) close(descriptor);
}

int run(int argc, char** argv, AddCommands add_commands) {
  CLI::App app("Inspects, compares, converts and draws FLD result files (version 4) of CFD solvers",
               "fldtool");
  app.set_version_flag("--version", "fldtool " FLDTOOL_VERSION, "Print the version and exit");
  app.set_help_flag("-h,--help", "Print this help and exit");
  app.set_help_all_flag("--help-all", "Print the help of all commands and exit");
  app.require_subcommand(0, 1);
  app.footer(std::string("'fldtool help COMMAND' prints the manual of a command.\n\n") + kExitStatusText);
  add_commands(app, argc > 1 ? argv[1] : "");
  try {
    run_command_line(app, argc, argv);
    return static_cast<int>(ExitStatus::ok);
  } catch (const QuietExit& exit) {
    return static_cast<int>(exit.status());
  } catch (const CommandError& error) {
    return report(error.status(), error.what());
  }
}

}  // namespace

int report(ExitStatus status, const std::string& message) {
  // The exit status counts even when the message cannot be written.
  write_if_possible(STDERR_FILENO, "fldtool: " + host::without_controls(message) + "\n");
  return static_cast<int>(status);
}

void add_inspecting_commands(CLI::App& app) {
  add_info_command(app);
  add_stats_command(app);
  add_values_command(app);
  add_integrate_command(app);
  add_diff_command(app);
  add_layout_command(app);
  add_check_command(app);
}

int run_program(int argc, char** argv, AddCommands add_commands) {
  open_standard_streams();
  catch_interrupts();
  try {
    return run(argc, argv, add_commands);
  } catch (const Interrupted& interruption) {
    return report(ExitStatus::interrupted, interruption.what());
  } catch (const std::exception& error) {
    return report(ExitStatus::failure, error.what());
  }
}

}  // namespace tool
