// What lists on the command line choose: parts, variables and steps.
#pragma once

#include <string>
#include <vector>

#include "host/session.h"

namespace tool {

// For the manuals of commands with such lists.
inline constexpr char kChoiceText[] =
    R"(Lists are separated by commas. Parts and variables are given by number or name, and a name may be a pattern with *
and ?. Parts can also be chosen by the words surfaces, volumes, whole and all. Steps count from 0; 2-5 is a range of
them, and all are all.

)";

// The numbers of the parts that `items` choose, ascending; the first step's parts and names count. Throws
// CommandError (wrong usage) for an item that chooses none.
std::vector<int> choose_parts(const host::Session& session, const std::vector<std::string>& items);

// The numbers of the variables that `items` choose, ascending; all of them when there are no items.
std::vector<int> choose_variables(host::Session& session, const std::vector<std::string>& items);

// The steps that `items` choose, ascending; all of them when there are no items.
std::vector<int> choose_steps(const host::Session& session, const std::vector<std::string>& items);

}  // namespace tool
