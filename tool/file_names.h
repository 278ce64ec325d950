// Checks of the file names on the command line, and the names of files that are written.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tool/cli_names.h"

namespace tool {

// For options and arguments that are file names: refuses an empty one.
CLI::Validator file_name();

// For options whose empty text would mean the same as leaving them out.
CLI::Validator not_empty();

// Throws CommandError (wrong usage) when the output's name has an extension that is none of these (".png"),
// in upper or lower case. Standard output, devices and names without an extension are fine.
void check_extension(const std::string& path, const std::vector<std::string_view>& extensions);

// The extension in lower case, with its dot; empty without one.
std::string extension_of(const std::string& path);

// A part of a file name that says what a file is for: `name` with an underscore for everything but letters,
// digits, - and _, and at most 60 characters long.
std::string plain_name(std::string_view name);

}  // namespace tool
