// The two sides of taking coordinates and elements of a whole mesh.
#pragma once

#include <filesystem>

#include "bench/child_process.h"

namespace bench {

// Through the entry points, into arrays that the host has allocated, and by loops over plain arrays. Both
// allocate their arrays before they are measured, and write them first while they are.
Work take_mesh(const std::filesystem::path& plugin, const std::filesystem::path& file);
Work write_mesh(const std::filesystem::path& plugin, const std::filesystem::path& file);

}  // namespace bench
