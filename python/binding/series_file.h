// VTKHDF files for Python.
#pragma once

#include <pybind11/pybind11.h>

namespace binding {

// Adds the class SeriesFile to the module.
void add_series_file(pybind11::module_& module);

}  // namespace binding
