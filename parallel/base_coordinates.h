// The coordinates of a rank's own nodes as a file has them, from which every motion starts.
#pragma once

#include <array>
#include <cstdint>

#include "layout/step_layout.h"
#include "parallel/array.h"
#include "parallel/file_arrays.h"
#include "parallel/partition.h"
#include "support/vfpa.h"

namespace parallel {

// One axis in the precision of its file, as a motion wants it.
class Axis {
 public:
  Axis() = default;
  // Reads the stretch.
  Axis(FileArrays& files, const layout::FileArray& array, Stretch own);

  const fld::VFPA& values() const { return values_; }
  Axis copy() const;

 private:
  void adopt(Array<float> singles);
  void adopt(Array<double> doubles);

  Array<float> singles_;
  Array<double> doubles_;
  fld::VFPA values_;
};

struct BaseCoordinates {
  std::array<layout::FileArray, 3> places;  // that the axes were read from
  std::array<Axis, 3> axes;
};

}  // namespace parallel
