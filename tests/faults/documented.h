// What the reader's pages say about how a call may fail.
#pragma once

#include <string>
#include <string_view>

#include "tests/faults/whole_session.h"

namespace faults {

// Whether the text matches the pattern, in which %d stands for a number and %s for anything.
bool matches(std::string_view pattern, std::string_view text);

// Why this is no documented ending of a call; empty when it is one. A failure result needs a documented
// message among the lines of its call, an exception a documented text, an assertion has to be one of those
// that are listed.
std::string undocumented(const CallEnding& call);
// The same of all calls of a session, each with its reason.
std::string undocumented(const Ending& ending);

}  // namespace faults
