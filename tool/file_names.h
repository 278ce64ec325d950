// Checks of the file names on the command line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tool/cli_names.h"

namespace tool {

// For options and arguments that are file names: refuses an empty one.
CLI::Validator file_name();

// Throws CommandError (wrong usage) when the output's name has an extension that is none of these (".png"),
// in upper or lower case. Standard output, devices and names without an extension are fine.
void check_extension(const std::string& path, const std::vector<std::string_view>& extensions);

// The extension in lower case, with its dot; empty without one.
std::string extension_of(const std::string& path);

}  // namespace tool
