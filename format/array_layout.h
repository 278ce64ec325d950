// The location of an array's elements in a file, so that any range of them can be read without the rest.
#pragma once

#include <cstdint>

namespace fld {

// An array, or a range of one. Its elements are stored in records of `per_record` elements (fewer in the last
// one), with two 4-byte markers between records.
struct ArrayLayout {
  int64_t offset = 0;  // of the array's first element in the file, in bytes
  int32_t width = 0;   // bytes of an element
  int32_t per_record = 0;
  int64_t first = 0;  // first element of the range
  int64_t count = 0;  // elements of the range

  bool operator==(const ArrayLayout&) const = default;

  // The elements begin to begin + n - 1 of this range.
  ArrayLayout stretch(int64_t begin, int64_t n) const {
    return {offset, width, per_record, first + begin, n};
  }

  // Offset of element `i` (from 0) of the range, in bytes.
  int64_t offset_of(int64_t i) const {
    constexpr int64_t kMarkers = 8;
    const int64_t element = first + i;
    return offset + element * width + (per_record > 0 ? element / per_record * kMarkers : 0);
  }

  // Number of contiguous elements in the file from element `i`, up to the end of its record.
  int64_t together_from(int64_t i) const {
    const int64_t left = count - i;
    if (per_record <= 0) return left;
    const int64_t in_record = per_record - (first + i) % per_record;
    return in_record < left ? in_record : left;
  }
};

}  // namespace fld
