// Reads the command line and says what is wrong with it.
#pragma once

#include <string>
#include <vector>

#include "tool/cli_names.h"
#include "tool/exit_status.h"

namespace tool {

// Runs the command that the command line names, or prints the help or the version. Throws CommandError (wrong
// usage) with what is unknown or missing, the nearest name and the help to look into.
void run_command_line(CLI::App& app, int argc, const char* const* argv);

// The arguments, with lists joined that a shell took apart at blanks: "--steps 0, 3" is "--steps 0,3".
std::vector<std::string> joined_lists(const CLI::App& app, const std::vector<std::string>& arguments);

// The command of that name; null if there is none.
const CLI::App* find_command(const CLI::App& app, const std::string& name);
// The error for a name that no command has.
CommandError unknown_command(const CLI::App& app, const std::string& name);

}  // namespace tool
