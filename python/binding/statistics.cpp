#include "python/binding/statistics.h"

#include <array>
#include <vector>

#include "host/magnitude.h"
#include "host/value_statistics.h"
#include "python/binding/requests.h"

namespace binding {
namespace {

namespace py = pybind11;

std::vector<host::ValueStatistics> statistics_of(const std::vector<host::HostArray>& components) {
  std::vector<host::ValueStatistics> all;
  for (const host::HostArray& component : components) all.emplace_back().add(component.values());
  if (components.size() == 3) {
    std::vector<float> magnitudes(components[0].values().size());
    for (std::size_t i = 0; i < magnitudes.size(); ++i) {
      magnitudes[i] =
          host::magnitude(components[0].values()[i], components[1].values()[i], components[2].values()[i]);
    }
    all.emplace_back().add(magnitudes);
  }
  return all;
}

py::tuple tuple_of(const host::ValueStatistics& statistics) {
  py::object minimum = py::none();
  py::object maximum = py::none();
  py::object mean = py::none();
  if (statistics.has_numbers()) {
    minimum = py::float_(statistics.minimum);
    maximum = py::float_(statistics.maximum);
    mean = py::float_(statistics.mean());
  }
  return py::make_tuple(minimum, maximum, mean, statistics.numbers, statistics.undefined,
                        statistics.not_numbers);
}

}  // namespace

py::object statistics(Dataset& dataset, int step, int part, int variable) {
  const int count = components_of(dataset, variable);
  std::vector<host::HostArray> components;
  for (int component = 0; component < count; ++component) {
    auto values = ask_values(dataset, step, part, variable, component);
    if (!values) return py::none();
    components.push_back(std::move(*values));
  }
  std::vector<host::ValueStatistics> all;
  {
    const py::gil_scoped_release without_gil;
    all = statistics_of(components);
  }
  py::list tuples;
  for (const host::ValueStatistics& one : all) tuples.append(tuple_of(one));
  return tuples;
}

}  // namespace binding
