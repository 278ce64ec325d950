// The manual page of the program, made from the very texts that its help shows.
#pragma once

#include <string>

#include "tool/cli_names.h"

namespace tool {

// The page, for section 1, as input for troff: the program's description, then every command with its options
// and the text of its footer, in which plain lines become paragraphs and lines with two columns become lists.
std::string man_page(const CLI::App& program, const std::string& version);

// Manual text as input for troff.
std::string man_text(const std::string& text);

}  // namespace tool
