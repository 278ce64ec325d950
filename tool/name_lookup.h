// Finds the part or variable that a command line means, by its number or its name.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "host/session.h"
#include "tool/exit_status.h"

namespace tool {

// The number of the part or variable. A number in range is taken as one; anything else is a name, in UTF-8 or
// in the file's own bytes. Throws CommandError (wrong usage) when there is none, or more than one of that
// name.
int find_part(const host::Session& session, const std::string& text);
int find_variable(host::Session& session, const std::string& text);

// What the lookup consists of, for lists of names too.

// The number that `text` is, if it is one in this range.
std::optional<int> number_in(std::string_view text, int lowest, int highest);
// Whether `text` means the name that the file gives in its own bytes.
bool is_name(const std::string& name, const std::string& text);
// `text` means none of the `count` parts or variables; `what` says which of the two they are.
CommandError no_such_item(const std::string& file, const char* what, const std::string& text,
                          std::size_t count);

}  // namespace tool
