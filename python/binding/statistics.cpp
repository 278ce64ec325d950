#include "python/binding/statistics.h"

#include <optional>
#include <utility>
#include <vector>

#include "host/magnitude.h"
#include "host/value_statistics.h"

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
  using All = std::vector<host::ValueStatistics>;
  const std::optional<All> all = dataset.at_step(step, [&](host::Session& session) -> std::optional<All> {
    const auto components = session.given_components(variable, part);
    if (!components) return std::nullopt;
    return statistics_of(*components);
  });
  if (!all) return py::none();
  py::list tuples;
  for (const host::ValueStatistics& one : *all) tuples.append(tuple_of(one));
  return tuples;
}

}  // namespace binding
