// What a mesh measures, and whether its parts fit together.
#pragma once

#include <string>
#include <vector>

#include "testkit/mesh.h"

namespace testkit {

// Volume of every element; a quadrilateral counts as four triangles around its middle, so that the volumes of
// neighbours add up without gap. In a cylindrical mesh they are those of the stored coordinates.
std::vector<double> volumes(const Mesh& mesh);

// What is wrong with the mesh, one line each, nothing for a good one: numbers out of range, nodes without
// element, elements that are not positive at every corner, faces that more than two elements have or that two
// elements turn the same way, outer faces that are not in exactly one surface (surfaces named with "&" or "@"
// aside), faces of surfaces that the linked element does not have.
std::vector<std::string> faults(const Mesh& mesh);

}  // namespace testkit
