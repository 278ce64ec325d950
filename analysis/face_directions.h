// Which way the faces of surfaces point: out of the volume that they bound.
//
// A reader does not hand over which element a face belongs to. So it is found by geometry: the element of a
// whole mesh that has the face's corners is its owner, and the face points away from the element's centre.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "analysis/whole_meshes.h"
#include "host/session.h"

namespace analysis {

struct FaceDirections {
  // Per face of the surface, in the order of its blocks: 1 where the corners turn counter-clockwise seen from
  // where it points to, -1 where they turn clockwise.
  std::vector<std::int8_t> signs;
  std::int64_t turned = 0;  // faces with -1
  // Faces inside the volume, which two elements have, and faces that no element has. Both point to where
  // their corners turn counter-clockwise.
  std::int64_t inside = 0;
  std::int64_t without_element = 0;
};

// The directions on these surfaces at the session's step, by their numbers. Reads the whole meshes, one after
// the other. Throws host::Error.
std::map<int, FaceDirections> find_face_directions(host::Session& session, const std::vector<int>& surfaces,
                                                   const IsCylindrical& is_cylindrical);

}  // namespace analysis
