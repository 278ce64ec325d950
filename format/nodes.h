// The nodes of one region set: the sections "LS_Nodes" and "LS_CoordinateSystem".
#pragma once

#include <stdio.h>

#include "format/array_layout.h"
#include "support/smart_ptr.h"
#include "support/vfpa.h"

namespace fld {

class Nodes {
 public:
  Nodes() = default;
  Nodes(const Nodes&) = delete;
  Nodes& operator=(const Nodes&) = delete;
  ~Nodes();

  int nnode = 0;
  // nnode values each; the axes may differ in precision. In a cylindrical region set: radius, angle in
  // radians, z.
  VFPA x, y, z;
};

// The location of a region set's coordinates in the file.
struct NodesLayout {
  int nnode = 0;
  ArrayLayout x, y, z;
};

// Reads the section's body: int block nnode; floating blocks of nnode values x, y, z; end rule.
smart_ptr<Nodes> FLDV4_Nodes(FILE* stream);

// Skips the body and notes the locations of its arrays.
void locate(FILE* stream, NodesLayout& nodes);

// Reads the section's body: int block of 1 (0 Cartesian, 1 cylindrical), end rule.
void FLDV4_CoordinateSystem(FILE* stream, int& value);

}  // namespace fld
