// Finds the part or variable that a command line means, by its number or its name.
#pragma once

#include <string>

#include "host/session.h"

namespace tool {

// The number of the part or variable. A number in range is taken as one; anything else is a name, in UTF-8 or
// in the file's own bytes. Throws CommandError (wrong usage) when there is none, or more than one of that
// name.
int find_part(const host::Session& session, const std::string& text);
int find_variable(host::Session& session, const std::string& text);

}  // namespace tool
