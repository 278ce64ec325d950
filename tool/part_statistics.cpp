#include "tool/part_statistics.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

#include "host/error.h"
#include "host/undefined_value.h"
#include "tool/vector_components.h"

namespace tool {
namespace {

bool is_number(float value) {
  return !host::is_undefined(value) && !std::isnan(value);
}

double deviation_of(std::span<const float> values, const host::ValueStatistics& statistics) {
  const double mean = statistics.mean();
  double squares = 0;
  for (const float value : values) {
    if (!is_number(value)) continue;
    const double apart = static_cast<double>(value) - mean;
    squares += apart * apart;
  }
  return std::sqrt(squares / static_cast<double>(statistics.numbers));
}

std::size_t first_place(std::span<const float> values, float wanted) {
  const auto found = std::find_if(values.begin(), values.end(),
                                  [&](float value) { return value == wanted && is_number(value); });
  return static_cast<std::size_t>(found - values.begin());
}

ComponentStatistics component_statistics(std::string name, std::span<const float> values,
                                         std::size_t intervals) {
  ComponentStatistics component;
  component.component = std::move(name);
  component.values = values.size();
  component.statistics.add(values);
  if (component.statistics.has_numbers()) {
    component.deviation = deviation_of(values, component.statistics);
    component.minimum.index = first_place(values, component.statistics.minimum);
    component.maximum.index = first_place(values, component.statistics.maximum);
  }
  if (intervals > 0) component.histogram = make_histogram(values, intervals);
  return component;
}

std::vector<float> magnitudes(const std::array<host::HostArray, 3>& vector) {
  const std::span<const float> x = vector[0].values();
  const std::span<const float> y = vector[1].values();
  const std::span<const float> z = vector[2].values();
  std::vector<float> result(x.size());
  for (std::size_t i = 0; i < x.size(); ++i) result[i] = magnitude(x[i], y[i], z[i]);
  return result;
}

// The coordinates of places on one part.
class Locator {
 public:
  Locator(host::Session& session, int part)
      : session_(session), part_(part), coordinates_(session.coordinates(part)) {}

  std::array<float, 3> at(host::Location location, std::size_t index) {
    return location == host::Location::element ? centre(index) : node(index);
  }

 private:
  std::array<float, 3> node(std::size_t index) const {
    return {coordinates_.x()[index], coordinates_.y()[index], coordinates_.z()[index]};
  }

  std::array<float, 3> centre(std::size_t index) {
    if (!blocks_) blocks_ = session_.elements(part_);
    for (const host::ElementBlock& block : *blocks_) {
      if (index >= block.size()) {
        index -= block.size();
        continue;
      }
      std::array<double, 3> sum{};
      const std::span<const int> nodes = block.element(index);
      for (const int number : nodes) {
        const std::array<float, 3> point = node(static_cast<std::size_t>(number) - 1);
        for (std::size_t axis = 0; axis < 3; ++axis) sum[axis] += static_cast<double>(point[axis]);
      }
      std::array<float, 3> result{};
      for (std::size_t axis = 0; axis < 3; ++axis)
        result[axis] = static_cast<float>(sum[axis] / static_cast<double>(nodes.size()));
      return result;
    }
    throw host::Error("a value belongs to no element");
  }

  host::Session& session_;
  int part_;
  host::Coordinates coordinates_;
  std::optional<std::vector<host::ElementBlock>> blocks_;
};

}  // namespace

PartStatistics part_statistics(QuantityValues& source, const Quantity& chosen, const host::Part& part,
                               std::size_t intervals) {
  const host::Variable& variable = chosen.variable;
  const bool is_vector = variable.kind == host::VariableKind::vector;
  const bool with_magnitude = is_vector && chosen.component.value_or(kMagnitude) == kMagnitude;
  const bool is_one = chosen.component && chosen.component != kMagnitude;
  PartStatistics result;
  result.part = part.number;
  std::array<host::HostArray, 3> vector;
  const int first = is_one ? *chosen.component : 0;
  const int last = is_one ? *chosen.component : variable.components() - 1;
  for (int i = first; i <= last; ++i) {
    host::PartValues values = source.values(chosen, part.number, i);
    result.availability = values.availability;
    if (values.availability != host::Availability::given) {
      result.failed = std::move(values);
      result.components.clear();
      return result;
    }
    const auto axis = static_cast<std::size_t>(i);
    if (!chosen.component || is_one) {
      result.components.push_back(
          component_statistics(is_vector ? kAxes[axis] : "", values.values(), intervals));
    }
    if (with_magnitude) vector[axis] = std::move(values.array);
  }
  if (with_magnitude)
    result.components.push_back(component_statistics(kComponents[kMagnitude], magnitudes(vector), intervals));
  return result;
}

void locate(host::Session& session, int part,
            const std::vector<std::pair<host::Location, PartStatistics*>>& statistics) {
  std::optional<Locator> locator;
  for (const auto& [location, found] : statistics) {
    for (ComponentStatistics& component : found->components) {
      if (!component.statistics.has_numbers()) continue;
      if (!locator) locator.emplace(session, part);
      for (ValuePlace* place : {&component.minimum, &component.maximum})
        place->coordinates = locator->at(location, place->index);
    }
  }
}

}  // namespace tool
