// The beginning of NumPy files, format 1.0.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

// Of a two-dimensional array of this type ("<f4", "<f8"), whose values follow row by row.
std::string npy_header(std::string_view type, std::size_t rows, std::size_t columns);

}  // namespace tool
