// Which reader of the format layer an input of the target "records" is for. An input is: the reader's number
// (one byte), an element count for the readers that are told one (two bytes, most significant first), and the
// file that the reader gets.
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
