// vantrel_fld._core: what the package vantrel_fld is built on. Numbers are the reader's: parts and variables
// count from 1, steps from 0.
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include "python/binding/arrays.h"
#include "python/binding/contents.h"
#include "python/binding/statistics.h"
#ifdef FLD_HAS_HDF5
#include "python/binding/series_file.h"
#endif

namespace py = pybind11;

namespace {

void raise(const binding::DatasetError& error) {
  const py::object type = py::module_::import("vantrel_fld._errors").attr("Error");
  const py::object made = type(error.what(), error.file, error.step);
  PyErr_SetObject(type.ptr(), made.ptr());
}

}  // namespace

PYBIND11_MODULE(_core, module) {
  binding::keep_lock_over_forks();
  py::register_exception_translator([](std::exception_ptr thrown) {
    try {
      if (thrown) std::rethrow_exception(thrown);
    } catch (const binding::DatasetError& error) {
      raise(error);
    }
  });

  module.attr("version") = FLD_VERSION;

  using binding::Dataset;
  py::class_<Dataset>(module, "Dataset")
      .def(py::init<const std::string&, bool, bool, const std::string&>(), py::arg("file"),
           py::arg("simplify"), py::arg("groups"), py::arg("plugin"))
      .def("close", &Dataset::close)
      .def("is_open", &Dataset::is_open)
      .def("reader", binding::reader_identity)
      .def("times", binding::times)
      .def("geometry_steps", binding::geometry_steps)
      .def("files", binding::files)
      .def("parts", binding::parts, py::arg("step"))
      .def("variables", binding::variables)
      .def("groups", binding::groups)
      .def("part_tree", binding::part_tree, py::arg("step"), py::arg("parts"))
      .def("points", binding::points, py::arg("step"), py::arg("part"))
      .def("cells", binding::cells, py::arg("step"), py::arg("part"))
      .def("bounds", binding::bounds, py::arg("step"), py::arg("part"))
      .def("values", binding::values, py::arg("step"), py::arg("part"), py::arg("variable"),
           py::arg("component"), py::arg("with_mask"))
      .def("statistics", binding::statistics, py::arg("step"), py::arg("part"), py::arg("variable"))
      .def("diagnostics", binding::diagnostics);
#ifdef FLD_HAS_HDF5
  binding::add_series_file(module);
#endif
}
