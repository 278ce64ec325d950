// The answers of a probe on their way between processes.
#pragma once

#include "tool/json_values.h"
#include "tool/prober.h"

namespace tool {

Json as_json(const ProbedStep& step);
ProbedStep probed_step(const Json& json);

}  // namespace tool
