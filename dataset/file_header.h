// The identification and header of one FLD file.
#pragma once

#include <limits>
#include <string>

#include "format/input_file.h"

namespace fld {

// The initial values apply when an item is missing: three dimensions, index base 0, cycle 0, time 0, and no
// value counts as undefined.
struct FLDHeader {
  char m_magic[9] = {};  // "VTRL-FLD" and a terminator
  int m_version = 0;     // 4 for every accepted file
  int m_dimension = 3;   // never 2 in an accepted file
  int m_bias = 0;        // index of the first node and element
  int m_cycle = 0;
  double m_time = 0.0;
  // The file's marker for undefined values, in single and double precision.
  float m_unusedFloat = std::numeric_limits<float>::infinity();
  double m_unusedDouble = std::numeric_limits<double>::infinity();
};

// Reads identification, version and header of `file`; `path` is for messages. Returns 0, or writes a message
// to stderr and returns -1 (the file could not be opened), -2 (not an FLD file) or -3 (wrong version or
// dimension). Throws FLDReadException when the header cannot be read.
int read_file_header(const InputFile& file, const std::string& path, FLDHeader& header);

// Writes the trace line for `path` to stderr.
void trace_reading(const std::string& path);

}  // namespace fld
