// Meshes of a few elements, for tests.
#pragma once

#include "testkit/description.h"
#include "testkit/mesh.h"

namespace testkit {

// Nodes (0,0,0), (1,0,0), (0,1,0), (0,0,1); material 1; surface "wall" with the four faces, linked to the
// element; volume "fluid".
Mesh one_tetrahedron();

// Four elements that fit together face to face, on 11 nodes: 0 the unit cube as a hexahedron, 1 a prism at
// its side x = 1 with an edge at x = 2, 2 a pyramid on the cube with its apex at z = 2, 3 a tetrahedron on
// the prism that leans on the pyramid. Volumes 1, 1/2, 1/3 and 1/6. Materials 1, 1, 2, 2. Surfaces "outside"
// (all outer faces, linked: 6 quadrilaterals and 6 triangles) and "@between" (the quadrilateral between
// hexahedron and prism, linked to nothing); volume regions "lower" (elements 0, 1) and "upper" (2, 3).
Mesh one_of_each();

// A file with the usual header and one region set with just this mesh.
File file_of(const Mesh& mesh, const Layout& layout = {});

}  // namespace testkit
