// Completion of the command line by shells, made from the commands' options.
#pragma once

#include <string>

#include "tool/cli_names.h"

namespace tool {

// The scripts that bash-completion and zsh load.
std::string bash_completion(const CLI::App& program);
std::string zsh_completion(const CLI::App& program);

}  // namespace tool
