// Takes the named groups out of the part-group text that a reader hands to its host.
#pragma once

#include <string_view>
#include <vector>

#include "host/dataset.h"

namespace host {

// The groups in the text's order; parts outside a group are left out. Names are the bytes of the text with
// its character references replaced. Since a reader does not escape what stands in a name, the text is taken
// line by line and a name ends where the line's last tag ends begin.
std::vector<PartGroup> parse_part_groups(std::string_view xml);

}  // namespace host
