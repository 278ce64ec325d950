// Grids as XML files (.vtu) of raw appended data.
#pragma once

#include <filesystem>
#include <vtkUnstructuredGrid.h>

namespace vtkdata {

enum class Compression { none, lz4, zlib };

// Writes the grid with 64-bit headers, so that every VTK reads it, whichever XML parser it was built with.
// Whether all of it was written.
bool write_grid(const std::filesystem::path& path, vtkUnstructuredGrid* grid,
                Compression compression = Compression::none);

}  // namespace vtkdata
