// fldtool help
#include <memory>
#include <string>

#include "CLI/CLI.hpp"
#include "tool/command_line.h"
#include "tool/commands.h"
#include "tool/completion.h"
#include "tool/exit_status.h"
#include "tool/man_page.h"
#include "tool/output.h"

namespace tool {
namespace {

constexpr char kHelpManual[] =
    R"(Without COMMAND, the list of commands; with it, the manual of that one, as 'fldtool COMMAND --help' prints it.

--man prints the manual page fldtool(1), which is made from the same texts. --bash and --zsh print the scripts by which
these shells complete commands and options; an installed package has them in place. For one session of bash:
  source <(fldtool help --bash)

)";

struct HelpOptions {
  std::string command;
  bool man = false;
  bool bash = false;
  bool zsh = false;
};

void run_help(const CLI::App& program, const HelpOptions& options) {
  Output output("");
  if (options.man) {
    output.write(man_page(program, FLDTOOL_VERSION));
  } else if (options.bash || options.zsh) {
    output.write(options.bash ? bash_completion(program) : zsh_completion(program));
  } else if (options.command.empty()) {
    // The program's own help would lead back here, because this command is the selected one.
    output.write(
        program.get_formatter()->make_help(&program, program.get_name(), CLI::AppFormatMode::Normal));
  } else {
    const CLI::App* command = find_command(program, options.command);
    if (command == nullptr) throw unknown_command(program, options.command);
    output.write(command->help(program.get_name()));
  }
  output.finish();
}

}  // namespace

void add_help_command(CLI::App& app) {
  const auto options = std::make_shared<HelpOptions>();
  CLI::App* command = app.add_subcommand("help", "Print the manual of a command");
  command->add_option("COMMAND", options->command, "The command");
  command->add_flag("--man", options->man, "Print the manual page of all commands for man(1)");
  CLI::Option* bash = command->add_flag("--bash", options->bash, "Print the completion script for bash");
  command->add_flag("--zsh", options->zsh, "Print the completion script for zsh")->excludes(bash);
  command->footer(std::string(kHelpManual) + kExitStatusText);
  command->callback([&app, options] { run_help(app, *options); });
}

}  // namespace tool
