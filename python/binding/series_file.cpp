#include "python/binding/series_file.h"

#include <memory>
#include <pybind11/stl.h>
#include <vector>

#include "python/binding/dataset.h"
#include "vtkhdf/series.h"

namespace binding {
namespace {

namespace py = pybind11;

// HDF5 is not safe for several threads, and Python's other packages may use the same library: everything
// happens under Python's lock.
class SeriesFile {
 public:
  SeriesFile(Dataset& dataset, const std::string& path, int first_step, const vtkhdf::SeriesOptions& options)
      : dataset_(dataset), series_(dataset.at_step_with_gil(first_step, [&](host::Session& session) {
          return std::make_unique<vtkhdf::Series>(path, session, options);
        })) {}

  void write_step(int step, const std::vector<int>& parts) {
    dataset_.at_step_with_gil(step, [&](host::Session& session) { series_->write_step(session, parts); });
  }

  // The file has what was written; nothing more may be.
  void close() { series_.reset(); }

 private:
  Dataset& dataset_;
  std::unique_ptr<vtkhdf::Series> series_;
};

std::unique_ptr<SeriesFile> make_series_file(Dataset& dataset, const std::string& path, int first_step,
                                             const std::vector<int>& variables, std::size_t steps,
                                             bool double_precision, bool compress) {
  return std::make_unique<SeriesFile>(dataset, path, first_step,
                                      vtkhdf::SeriesOptions{.variables = variables,
                                                            .steps = steps,
                                                            .double_precision = double_precision,
                                                            .compress = compress});
}

}  // namespace

void add_series_file(py::module_& module) {
  py::register_exception_translator([](std::exception_ptr thrown) {
    try {
      if (thrown) std::rethrow_exception(thrown);
    } catch (const vtkhdf::WriteError& error) {
      PyErr_SetObject(PyExc_OSError, py::make_tuple(error.number, error.what()).ptr());
    }
  });
  py::class_<SeriesFile>(module, "SeriesFile")
      .def(py::init(&make_series_file), py::arg("dataset"), py::arg("path"), py::arg("first_step"),
           py::arg("variables"), py::arg("steps"), py::arg("double_precision"), py::arg("compress"),
           py::keep_alive<1, 2>())
      .def("write_step", &SeriesFile::write_step, py::arg("step"), py::arg("parts"))
      .def("close", &SeriesFile::close);
}

}  // namespace binding
