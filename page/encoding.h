// How numbers are written into a page: coded so that they compress well, and decoded by browser/decode.js.
#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <vector>

#include "page/surface.h"

namespace page {

using Bytes = std::string;

// How exact numbers are.
struct Precision {
  int coordinate_bits = 16;  // of a coordinate within the part's box, up to 16; 0: single precision
  int value_bits = 16;       // of a value within its range
};

inline constexpr Precision kFullPrecision = {0, 0};

// The ends of a range, and of quantised numbers what the lowest and the highest code mean.
struct Range {
  float low = std::numeric_limits<float>::quiet_NaN();
  float high = std::numeric_limits<float>::quiet_NaN();
};

// Of the finite numbers; NaN without any.
Range range_of(std::span<const float> numbers);

// Quantised: per number a code from 0 for range.low to 2^bits - 2 for range.high; numbers that are not finite
// have the highest code. Stored are the differences between neighbours, first the low bytes, then the high
// ones. With 0 bits the four bytes of the numbers, also each in a plane of its own.
void append_numbers(Bytes& bytes, std::span<const float> numbers, Range range, int bits);

// Unsigned integers in groups of 7 bits, the lowest first; all groups but the last have bit 7 set.
void append_varint(Bytes& bytes, std::uint64_t number);

// Faces, in varints: runs of faces of one size (count of runs; per run count and size), corners (per corner
// the difference from the same corner of the face before), elements and nodes (per number the difference from
// the one before). Differences are zigzag-coded: 0, -1, 1, -2 ... are 0, 1, 2, 3.
void append_faces(Bytes& bytes, const Faces& faces);

// A zlib stream of the bytes, in base64.
std::string pack(const Bytes& bytes);

}  // namespace page
