// Parses the named groups of parts from the metadata of a reader.
#pragma once

#include <string_view>
#include <vector>

#include "host/dataset.h"

namespace host {

// The groups in the order of the text; parts outside a group are ignored. Names are the bytes of the text
// with character references replaced. A reader does not escape names, so the text is parsed line by line, and
// a name extends to the end tag of its line.
std::vector<PartGroup> parse_part_groups(std::string_view xml);

}  // namespace host
