// The documented ways in which a call can fail.
#pragma once

#include <string>
#include <string_view>

#include "tests/faults/whole_session.h"

namespace faults {

// Whether the text matches the pattern; %d stands for a number and %s for any text.
bool matches(std::string_view pattern, std::string_view text);

// Why this is not a documented result of a call; empty if it is. A failure result needs a documented message,
// an exception a documented text, and an assertion must be listed.
std::string undocumented(const CallEnding& call);
// The same for all calls of a session.
std::string undocumented(const Ending& ending);

}  // namespace faults
