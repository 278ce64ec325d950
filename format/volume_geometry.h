// Volume regions (cell zones) and the sections "LS_VolumeGeometry" and "LS_VolumeGeometryArray".
#pragma once

#include <stdio.h>
#include <string>
#include <vector>

#include "format/array_layout.h"
#include "format/element_counts.h"
#include "support/smart_ptr.h"

namespace fld {

class VolumeGeometry : public ElementCounts {
 public:
  VolumeGeometry() = default;
  VolumeGeometry(const VolumeGeometry&) = delete;
  VolumeGeometry& operator=(const VolumeGeometry&) = delete;
  ~VolumeGeometry();

  char* name = nullptr;  // NUL-terminated
  int nelem = 0;
  int* elem = nullptr;  // nelem indices into the region set's Elements
};

// The location of a volume region's element list in the file.
struct VolumeLayout {
  std::string name;
  int nelem = 0;
  ArrayLayout elem;
};

// The readers replace the contents of the list.

// Body: int block R (regions); int block L (length of a name); per region: char block of L, int block nelem,
// int block of nelem element numbers; end rule.
void FLDV4_VolumeGeometry(FILE* stream, std::vector<smart_ptr<VolumeGeometry>>& list);

// Body: int blocks R and L; char block of R * L; int block of R nelem; int block of all element numbers; end
// rule. If R is 0, the end rule may follow L.
void FLDV4_VolumeGeometryArray(FILE* stream, std::vector<smart_ptr<VolumeGeometry>>& list);

// Skip the bodies and note the locations of the regions' lists.
void locate_volumes(FILE* stream, std::vector<VolumeLayout>& list);
void locate_volume_array(FILE* stream, std::vector<VolumeLayout>& list);

}  // namespace fld
