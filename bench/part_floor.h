// The floors of what a host takes of a part: loops over plain arrays that write the host's.
#pragma once

#include <map>
#include <vector>

#include "bench/host_arrays.h"

namespace bench {

// What the loops read: a mesh as plain arrays.
struct PlainMesh {
  std::vector<float> x, y, z;
  std::map<int, std::vector<int>> corners;  // by slot, of all its elements, from 0
};

// The same mesh as a host gets it for this part.
PlainMesh plain_mesh(const Host& host, const PartInfo& part);

// Writes coordinates into new arrays of a host.
HostCoordinates write_coordinates(const PlainMesh& mesh);

// Writes the numbers, from 1, into the rows of one shape.
void write_rows(const std::vector<int>& corners, const HostRows& rows);

}  // namespace bench
