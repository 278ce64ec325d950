// The forms in which `fldtool stats` prints what it finds: text, JSON and comma-separated lines.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/session.h"
#include "tool/coordinate_names.h"
#include "tool/part_statistics.h"
#include "tool/step_printer.h"

namespace tool {

// One variable of the session's step on its parts.
struct VariableStatistics {
  host::Variable variable;
  std::vector<PartStatistics> parts;
};

using StatsPrinter = StepPrinter<VariableStatistics>;

std::unique_ptr<StatsPrinter> make_stats_text();
// The object of the manual in command_stats.cpp; `file` is its "file".
std::unique_ptr<StatsPrinter> make_stats_json(const std::string& file);
// A header line, then a line per step, part, variable and component.
std::unique_ptr<StatsPrinter> make_stats_csv();

}  // namespace tool
