// Datasets of random content that readers have to accept: every form of the sections, element types and
// precision, and now and then what is odd but legal, such as node numbers that the mesh does not have.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "testkit/description.h"

namespace testkit {

// The files of a series with ascending times and cycle numbers, of one to three region sets: the first file
// has the whole mesh, later ones all of it, some of it, a motion of its volumes, or quantities alone. The
// same seed gives the same files.
std::vector<File> random_series(std::uint64_t seed);

// What file number `index` of the series is called: "<base>_<cycle>.fld".
std::string random_file_name(const std::string& base, std::size_t index);

}  // namespace testkit
