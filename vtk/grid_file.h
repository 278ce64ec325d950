// Writes grids as XML files (.vtu) with raw appended data.
#pragma once

#include <filesystem>
#include <vtkUnstructuredGrid.h>

#include "vtk/compression.h"

namespace vtkdata {

// Writes the grid with 64-bit headers, in a form that every VTK can read, whichever XML parser it uses.
// Returns whether all of it was written.
bool write_grid(const std::filesystem::path& path, vtkUnstructuredGrid* grid,
                Compression compression = Compression::none);

}  // namespace vtkdata
