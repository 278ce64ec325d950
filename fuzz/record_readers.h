// The readers of the format layer for the target "records". An input consists of the reader's number (one
// byte), an element count for readers that take one (two bytes, big-endian), and the file.
#pragma once

#include <cstdint>

namespace fuzz {

enum class RecordReader : std::uint8_t {
  identification,
  title,
  rule,
  end,
  skip,
  skip_block,
  integers,
  long_integers,
  real,
  reals,
  text,
  field,
  characters,
  characters80,
  integer,
  integer_array,
  header,
  coordinate_system,
  nodes,
  elements,
  materials,
  surfaces,
  surface_array,
  volumes,
  volume_array,
  motion,
  scalar,
  vector,
  scalar_index,
  vector_index,
  count_of_readers
};

}  // namespace fuzz
