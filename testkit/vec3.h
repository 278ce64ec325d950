// Points and vectors.
#pragma once

#include <array>

namespace testkit {

using Vec3 = std::array<double, 3>;

}  // namespace testkit
