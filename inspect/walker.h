// Walks over a file from front to back and passes its content to a visitor. Errors are passed too, and the
// walk continues where the position of the next record is certain.
#pragma once

#include <cstdint>

#include "inspect/byte_reader.h"
#include "inspect/byte_source.h"
#include "inspect/visitor.h"

namespace inspect {

enum class WalkEnd {
  complete,  // to the end of the file
  stopped,   // no valid record where one is expected
  not_fld,   // wrong identification; nothing was passed to the visitor
};

struct WalkResult {
  WalkEnd end = WalkEnd::complete;
  std::uint64_t offset = 0;  // where the walk ended
};

// Whether the file begins with the identification. Throws ReadError.
bool is_fld(ByteSource& source);

// Throws ReadError.
WalkResult walk(ByteSource& source, Visitor& visitor, const Progress& progress = {});

}  // namespace inspect
