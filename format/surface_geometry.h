// Surface regions (boundaries and interfaces made of faces) and the sections "LS_SurfaceGeometry" and
// "LS_SurfaceGeometryArray".
#pragma once

#include <stdio.h>
#include <string>
#include <vector>

#include "format/array_layout.h"
#include "support/smart_ptr.h"

namespace fld {

class SurfaceGeometry {
 public:
  SurfaceGeometry() = default;
  SurfaceGeometry(const SurfaceGeometry&) = delete;
  SurfaceGeometry& operator=(const SurfaceGeometry&) = delete;
  ~SurfaceGeometry();

  char* name = nullptr;  // NUL-terminated
  int nface = 0;
  int* faceType = nullptr;  // nface face codes
  int* faceLink = nullptr;  // nface indices of the element that the face belongs to, -1 for none
  int nfaceNode = 0;
  int* faceNode = nullptr;  // nfaceNode node indices, face by face
  // Numbers of faces of code 133 and 134; set when the geometry is assembled.
  int ntri = 0;
  int nquad = 0;
};

// The location of a surface region's arrays in the file.
struct SurfaceLayout {
  std::string name;
  int nface = 0;
  ArrayLayout faceType;
  ArrayLayout faceLink;
  int nfaceNode = 0;
  ArrayLayout faceNode;
};

// The readers replace the contents of the list.

// Body: int block R (regions); int block L (length of a name); per region: char block of L, int block nface,
// int block of nface types, int block of nface links, int block nfaceNode, int block of nfaceNode node
// numbers; end rule.
void FLDV4_SurfaceGeometry(FILE* stream, std::vector<smart_ptr<SurfaceGeometry>>& list);

// Body: int blocks R and L; char block of R * L; int block of R nface; int blocks of all types and all links;
// int block of R nfaceNode; int block of all node numbers; end rule. If R is 0, the end rule may follow L.
void FLDV4_SurfaceGeometryArray(FILE* stream, std::vector<smart_ptr<SurfaceGeometry>>& list);

// Skip the bodies and note the locations of the regions' arrays.
void locate_surfaces(FILE* stream, std::vector<SurfaceLayout>& list);
void locate_surface_array(FILE* stream, std::vector<SurfaceLayout>& list);

}  // namespace fld
