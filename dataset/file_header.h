// The identification and header of one FLD file, and opening a file up to the end of its header.
#pragma once

#include <limits>
#include <string>

#include "format/input_file.h"

namespace fld {

// Values that an item missing from the header leaves in place are the initial ones here: three dimensions,
// index base 0, cycle 0 at time 0, and nothing counts as undefined.
struct FLDHeader {
  char m_magic[9] = {};  // "VTRL-FLD" and a terminator
  int m_version = 0;     // 4 for every accepted file
  int m_dimension = 3;   // never 2 in an accepted file
  int m_bias = 0;        // the number of the first node and element
  int m_cycle = 0;
  double m_time = 0.0;
  // The writer's marker for undefined values, in single and double precision.
  float m_unusedFloat = std::numeric_limits<float>::infinity();
  double m_unusedDouble = std::numeric_limits<double>::infinity();
};

// Reads identification, version and header from `file`, which was opened from `path`. Returns 0, or writes
// its message to the standard error stream and returns -1 (the file could not be opened), -2 (not an FLD
// file) or -3 (wrong version or dimension). Throws FLDReadException when the header cannot be read.
int read_file_header(const InputFile& file, const std::string& path, FLDHeader& header);

// Writes the line that traces the reading of a file to the standard error stream.
void trace_reading(const std::string& path);

}  // namespace fld
