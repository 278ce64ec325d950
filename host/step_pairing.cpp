#include "host/step_pairing.h"

#include <cstddef>

namespace host {
namespace {

// The last geometry step that is not later than `time`; the first one if all are later.
int last_not_later(const std::vector<float>& geometry_times, float time) {
  int step = 0;
  for (std::size_t i = 0; i < geometry_times.size(); ++i) {
    if (geometry_times[i] <= time) step = static_cast<int>(i);
  }
  return step;
}

}  // namespace

std::vector<int> pair_steps(const std::vector<float>& variable_times,
                            const std::vector<float>& geometry_times) {
  std::vector<int> steps;
  steps.reserve(variable_times.size());
  std::size_t next = 0;  // the next geometry step to match
  for (const float time : variable_times) {
    if (next < geometry_times.size() && geometry_times[next] == time) ++next;
    steps.push_back(next == 0 ? 0 : static_cast<int>(next) - 1);
  }
  if (next == geometry_times.size()) return steps;

  for (std::size_t i = 0; i < steps.size(); ++i) steps[i] = last_not_later(geometry_times, variable_times[i]);
  return steps;
}

}  // namespace host
