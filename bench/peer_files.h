// Files of formats that VTK reads but does not write. Both throw std::runtime_error when writing fails.
#pragma once

#include <filesystem>

#include "bench/peers.h"

namespace bench {

// VTKHDF 1.0, an unstructured grid in one piece, uncompressed.
void write_vtkhdf(const PeerMesh& mesh, const std::filesystem::path& path);

// CGNS in an HDF5 file: one base, one zone, one section of hexahedra, one solution at the vertices.
void write_cgns(const PeerMesh& mesh, const std::filesystem::path& path);

}  // namespace bench
