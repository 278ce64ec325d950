// The numbers of the two time sets that the host is given.
#pragma once

namespace fld {

constexpr int kGeometrySet = 1;
constexpr int kVariablesSet = 2;

}  // namespace fld
