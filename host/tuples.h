// Coordinates and values as interleaved arrays, which VTK, HDF5 files and NumPy have: all components of the
// first node or element, then those of the second.
#pragma once

#include <cstddef>
#include <limits>
#include <span>
#include <vector>

#include "host/dataset.h"
#include "host/thread_ranges.h"
#include "host/undefined_value.h"

namespace host {

// Writes convert(x[i]), convert(y[i]), convert(z[i]) for each i in turn.
template <typename Real, typename Convert>
void interleave(std::span<const float> x, std::span<const float> y, std::span<const float> z, Real* to,
                Convert convert) {
  for_ranges(x.size(), 3 * sizeof(Real), [=](std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) {
      to[3 * i] = convert(x[i]);
      to[3 * i + 1] = convert(y[i]);
      to[3 * i + 2] = convert(z[i]);
    }
  });
}

// Writes x, y, z of each node in turn.
template <typename Real>
void put_points(const Coordinates& coordinates, Real* to) {
  interleave(coordinates.x(), coordinates.y(), coordinates.z(), to,
             [](float value) { return static_cast<Real>(value); });
}

// The value, NaN if it is undefined.
template <typename Real>
Real value_or_nan(float value) {
  return is_undefined(value) ? std::numeric_limits<Real>::quiet_NaN() : static_cast<Real>(value);
}

// Writes values with NaN where they are undefined. `to` may be where they are already.
template <typename Real>
void put_values(std::span<const float> values, Real* to) {
  for_ranges(values.size(), sizeof(Real), [=](std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) to[i] = value_or_nan<Real>(values[i]);
  });
}

// The same for the one or three components of a variable, interleaved.
template <typename Real>
void put_tuples(const std::vector<HostArray>& components, Real* to) {
  if (components.size() == 1) return put_values(components[0].values(), to);
  interleave(components[0].values(), components[1].values(), components[2].values(), to, value_or_nan<Real>);
}

}  // namespace host
