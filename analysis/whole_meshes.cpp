#include "analysis/whole_meshes.h"

#include <cmath>
#include <cstddef>

namespace analysis {

std::vector<int> whole_parts(const host::Session& session) {
  std::vector<int> numbers;
  for (const host::Part& part : session.parts()) {
    if (part.kind == host::PartKind::whole) numbers.push_back(part.number);
  }
  return numbers;
}

host::Coordinates cartesian_coordinates(host::Session& session, int part,
                                        const IsCylindrical& is_cylindrical) {
  host::Coordinates coordinates = session.coordinates(part);
  if (!is_cylindrical(session.part(part))) return coordinates;
  float* x = coordinates.axes[0].entries();
  float* y = coordinates.axes[1].entries();
  const std::size_t count = coordinates.size();
  for (std::size_t k = 1; k <= count; ++k) {
    const auto radius = static_cast<double>(x[k]);
    const auto angle = static_cast<double>(y[k]);
    x[k] = static_cast<float>(radius * std::cos(angle));
    y[k] = static_cast<float>(radius * std::sin(angle));
  }
  return coordinates;
}

}  // namespace analysis
