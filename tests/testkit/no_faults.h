// What testkit::faults says of a mesh without faults.
#pragma once

#include <string>
#include <vector>

inline const std::vector<std::string> kNoFaults;
