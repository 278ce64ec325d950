// Describes positions in a file for findings.
#pragma once

#include <string>

#include "inspect/pieces.h"

namespace inspect {

// "region set 0, LS_SurfaceGeometry, face codes of region 3"; without a block only the first two.
std::string place_of(const Title& title, const Block* block = nullptr);

}  // namespace inspect
