// Goes through a file from front to back and tells a visitor everything that is there. What is wrong is told
// as well, and the walk goes on wherever that leaves no doubt.
#pragma once

#include <cstdint>

#include "inspect/byte_reader.h"
#include "inspect/byte_source.h"
#include "inspect/visitor.h"

namespace inspect {

enum class WalkEnd {
  complete,  // to the end of the file
  stopped,   // where a record should begin there is none
  not_fld,   // the identification is another one; nothing was told
};

struct WalkResult {
  WalkEnd end = WalkEnd::complete;
  std::uint64_t offset = 0;  // where the walk ended
};

// Whether the identification is right. Throws ReadError.
bool is_fld(ByteSource& source);

// Throws ReadError.
WalkResult walk(ByteSource& source, Visitor& visitor, const Progress& progress = {});

}  // namespace inspect
