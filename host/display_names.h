// Names of parts and variables for display: UTF-8 without control characters, never empty, unique.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/session.h"

namespace host {

// One per part, in the order of their numbers. A name shared by several parts is followed by the part number:
// "wall (3)", "wall (7)"; whole meshes of several region sets are distinguished by the region set, from 0:
// "ALL_ELEMENTS (region set 1)"; a part without a name is "part 4".
std::vector<std::string> part_names(const Session& session);
std::vector<std::string> part_names(const std::vector<Part>& parts);

// One per variable, in the same way.
std::vector<std::string> variable_names(Session& session);
std::vector<std::string> variable_names(const std::vector<Variable>& variables);

// The labels of the variables: an entry "name: label" for each variable that has one.
std::vector<std::string> labelled_names(Session& session);
std::vector<std::string> labelled_names(const std::vector<Variable>& variables);

// The text in brackets at the end of a label: "Pa" for "Static pressure [Pa]"; empty if there is none.
std::string unit_of_label(std::string_view label);

}  // namespace host
