// How the arrays in a file are compressed.
#pragma once

namespace vtkdata {

enum class Compression { none, lz4, zlib };

}  // namespace vtkdata
