// Writes a dataset as one VTKHDF file.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>

#include "host/session.h"
#include "tool/series_writer.h"

namespace tool {

inline constexpr char kVtkHdfExtension[] = ".vtkhdf";

// Writes up to so many steps into the file, whose folder is made if it is missing. Throws CommandError when
// it cannot be made, when the options ask for what the format does not have, and when this program was built
// without HDF5.
std::unique_ptr<SeriesWriter> make_vtkhdf_series(host::Session& session, const std::filesystem::path& file,
                                                 const SeriesOptions& options, std::size_t steps);

}  // namespace tool
