// What a host can take from the lines that the reader writes to the standard error stream.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host {

// Why a call failed: the last two messages that are neither traces of files being read nor warnings, joined
// by "; ", without the name of this program in front of an assertion. A very long message is cut at its
// front. The result is empty when there is none.
std::string reason_in_diagnostics(std::string_view text);

// The paths of the files that the reader traced ("IN ( FLD): path"), each once, in the order of their first
// lines. A reader traces a file when it indexes it and again when it takes the geometry from it.
std::vector<std::string> traced_files(std::string_view text);

// The path in the last line that names a file as traced, not found or not readable; empty when there is none.
std::string last_named_file(std::string_view text);

// The reader's warnings about doubtful data ("WARNING : ..."), each once, without the word in front.
std::vector<std::string> warnings(std::string_view text);

// Whether the reader said that the geometry of the selected step could not be brought in. Selecting a step
// has no result, so this is the only sign of it.
bool tells_geometry_failure(std::string_view text);

// The text of one call for keeping: the first and the last 64 KiB of a long one, cut at line ends if there
// are any, and a line between them that says how much was left out.
std::string shortened(std::string_view text);

// The lines of `text` without their ends; empty lines are left out.
std::vector<std::string_view> split_lines(std::string_view text);

}  // namespace host
