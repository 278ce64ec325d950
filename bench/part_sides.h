// The two sides of taking coordinates and elements of a whole mesh.
#pragma once

#include <filesystem>

#include "bench/child_process.h"

namespace bench {

// Through the entry points, into arrays of the host, and by loops over plain arrays into the same kind of
// arrays. Both write them first while they are measured.
Work take_mesh(const std::filesystem::path& plugin, const std::filesystem::path& file);
Work write_mesh(const std::filesystem::path& plugin, const std::filesystem::path& file);

}  // namespace bench
