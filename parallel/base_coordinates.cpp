#include "parallel/base_coordinates.h"

#include <algorithm>
#include <utility>

namespace parallel {
namespace {

template <typename Real>
Array<Real> read_axis(FileArrays& files, const layout::FileArray& array, Stretch own) {
  Array<Real> values(own.size());
  Real* next = values.data();
  files.read<Real>(array, own.first, own.size(),
                   [&](const Real* from, std::int64_t count) { next = std::copy_n(from, count, next); });
  return values;
}

template <typename Real>
Array<Real> copy_of(const Array<Real>& values) {
  Array<Real> copy(values.size());
  std::copy(values.span().begin(), values.span().end(), copy.data());
  return copy;
}

}  // namespace

Axis::Axis(FileArrays& files, const layout::FileArray& array, Stretch own) {
  if (array.place.width == sizeof(float)) {
    adopt(read_axis<float>(files, array, own));
  } else {
    adopt(read_axis<double>(files, array, own));
  }
}

Axis Axis::copy() const {
  Axis made;
  if (values_.precision == sizeof(float)) {
    made.adopt(copy_of(singles_));
  } else {
    made.adopt(copy_of(doubles_));
  }
  return made;
}

void Axis::adopt(Array<float> singles) {
  singles_ = std::move(singles);
  values_ = {sizeof(float), singles_.data()};
}

void Axis::adopt(Array<double> doubles) {
  doubles_ = std::move(doubles);
  values_ = {sizeof(double), doubles_.data()};
}

}  // namespace parallel
