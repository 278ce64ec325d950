// Extracts information from the lines that the reader writes to the standard error stream.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host {

// Why a call failed: the last two messages that are neither traces nor warnings, joined by "; ", without the
// name of this program at the front of an assertion. Of a very long message the end is kept. Empty if there
// is none.
std::string reason_in_diagnostics(std::string_view text);

// The paths of the files that the reader traced ("IN ( FLD): path"), each once, in the order of their first
// traces. A reader traces a file when it indexes it and again when it reads geometry from it.
std::vector<std::string> traced_files(std::string_view text);

// The path in the last line that names a file as traced, not found or not readable; empty when there is none.
std::string last_named_file(std::string_view text);

// The reader's warnings about doubtful data ("WARNING : ..."), each once, without the prefix.
std::vector<std::string> warnings(std::string_view text);

// Whether the reader reported that it could not load the geometry of the selected step. Selecting a step has
// no result, so this is the only indication.
bool tells_geometry_failure(std::string_view text);

// The text of one call for keeping: the first and the last 64 KiB of a long one, cut at line ends if there
// are any, and a line between them that says how much was left out.
std::string shortened(std::string_view text);

// The lines of `text` without their ends; empty lines are left out.
std::vector<std::string_view> split_lines(std::string_view text);

}  // namespace host
