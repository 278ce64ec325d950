// Volumes of a mesh, and whether it is consistent.
#pragma once

#include <string>
#include <vector>

#include "testkit/mesh.h"

namespace testkit {

// Volume of every element. A quadrilateral counts as four triangles around its centre, so that neighbours
// have no gap. In a cylindrical mesh the stored coordinates are used.
std::vector<double> volumes(const Mesh& mesh);

// The defects of a mesh, one line each: numbers out of range, unused nodes, elements that are not positive at
// every corner, faces with more than two elements or with two of the same orientation, outer faces that are
// not in exactly one surface (ignoring surfaces named "&..." or "@..."), surface faces that the linked
// element does not have.
std::vector<std::string> faults(const Mesh& mesh);

}  // namespace testkit
