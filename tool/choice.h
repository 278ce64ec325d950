// What lists on the command line choose: parts, variables and steps.
#pragma once

#include <string>
#include <vector>

#include "host/session.h"
#include "tool/chosen_parts.h"

namespace tool {

// For the manuals of commands with such lists.
inline constexpr char kChoiceText[] =
    R"(Lists are separated by commas. Parts and variables are given by number or name, and a name may be a pattern with *
and ?. Parts can also be chosen by the words surfaces, volumes, whole and all. Numbers and names of parts are those of
the first step; at other steps the part of the same kind and name is meant, whatever its number, and it is told where a
step has none. Steps count from 0; 2-5 is a range of them, and all are all.

)";

// The parts that `items` choose; the parts and names at the session's step count. Throws CommandError (wrong
// usage) for an item that chooses none.
ChosenParts choose_parts(const host::Session& session, const std::vector<std::string>& items);

// The numbers of the variables that `items` choose, ascending; all of them when there are no items.
std::vector<int> choose_variables(host::Session& session, const std::vector<std::string>& items);

// The steps that `items` choose, ascending; all of them when there are no items.
std::vector<int> choose_steps(const host::Session& session, const std::vector<std::string>& items);

}  // namespace tool
