#include "host/step_pairing.h"

#include <algorithm>
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

// The step of the variables that each geometry step is matched with, in order by equal times; fewer than
// there are geometry steps where the times do not match.
std::vector<std::size_t> match_in_order(const std::vector<float>& variable_times,
                                        const std::vector<float>& geometry_times) {
  std::vector<std::size_t> matched;
  for (std::size_t i = 0; i < variable_times.size() && matched.size() < geometry_times.size(); ++i) {
    if (geometry_times[matched.size()] == variable_times[i]) matched.push_back(i);
  }
  return matched;
}

// Asks for those that could be matched with a later step of the same time as well. The first geometry step is
// that of the first file.
void settle_equal_times(const std::vector<float>& times, const StepOfGeometry& step_of,
                        std::vector<std::size_t>& matched) {
  for (std::size_t g = 1; g < matched.size(); ++g) {
    const std::size_t first = std::max(matched[g], matched[g - 1] + 1);
    std::size_t end = first;  // behind the steps that follow each other with this time
    while (end < times.size() && times[end] == times[first]) ++end;
    std::size_t next = g;  // the first geometry step behind them
    while (next < matched.size() && matched[next] < end) ++next;
    matched[g] = first;
    if (end - first == next - g) continue;
    const std::optional<int> told = step_of(static_cast<int>(g));
    const auto step = static_cast<std::size_t>(told.value_or(0));
    if (first <= step && step <= end - (next - g)) matched[g] = step;
  }
}

}  // namespace

std::vector<int> pair_steps(const std::vector<float>& variable_times,
                            const std::vector<float>& geometry_times, const StepOfGeometry& step_of) {
  std::vector<int> steps(variable_times.size());
  std::vector<std::size_t> matched = match_in_order(variable_times, geometry_times);
  if (matched.size() < geometry_times.size()) {
    for (std::size_t i = 0; i < steps.size(); ++i)
      steps[i] = last_not_later(geometry_times, variable_times[i]);
    return steps;
  }
  if (step_of) settle_equal_times(variable_times, step_of, matched);
  std::size_t next = 0;  // the next geometry step
  for (std::size_t i = 0; i < steps.size(); ++i) {
    while (next < matched.size() && matched[next] <= i) ++next;
    steps[i] = next == 0 ? 0 : static_cast<int>(next) - 1;
  }
  return steps;
}

}  // namespace host
