#include "tool/part_statistics.h"

#include <array>
#include <span>
#include <utility>

#include "host/error.h"
#include "tool/vector_components.h"

namespace tool {
namespace {

ComponentStatistics component_statistics(std::string name, std::span<const float> values,
                                         std::size_t intervals) {
  ComponentStatistics component{
      .component = std::move(name), .values = values.size(), .statistics = {}, .histogram = {}};
  component.statistics.add(values);
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

// The values of one component; those of a reader that answers with an exception have failed too.
host::PartValues values_of(host::Session& session, int variable, int part, int component) {
  try {
    return session.values(variable, part, component);
  } catch (const host::Error& error) {
    return {.availability = host::Availability::failed, .reason = error.reason(), .array = {}};
  }
}

}  // namespace

PartStatistics part_statistics(host::Session& session, const host::Variable& variable, const host::Part& part,
                               std::size_t intervals) {
  const bool is_vector = variable.kind == host::VariableKind::vector;
  PartStatistics result{.part = part.number, .availability = {}, .reason = {}, .components = {}};
  std::array<host::HostArray, 3> vector;
  for (int i = 0; i < variable.components(); ++i) {
    host::PartValues values = values_of(session, variable.number, part.number, i);
    result.availability = values.availability;
    result.reason = values.reason;
    if (values.availability != host::Availability::given) {
      result.components.clear();
      return result;
    }
    const auto axis = static_cast<std::size_t>(i);
    result.components.push_back(
        component_statistics(is_vector ? kAxes[axis] : "", values.values(), intervals));
    if (is_vector) vector[axis] = std::move(values.array);
  }
  if (is_vector)
    result.components.push_back(component_statistics("magnitude", magnitudes(vector), intervals));
  return result;
}

}  // namespace tool
