// The forms in which `fldtool stats` prints what it finds: text, JSON and comma-separated lines.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/session.h"
#include "tool/coordinate_names.h"
#include "tool/output.h"
#include "tool/part_statistics.h"

namespace tool {

// One variable of the session's step on its parts.
struct VariableStatistics {
  host::Variable variable;
  std::vector<PartStatistics> parts;
};

class StatsPrinter {
 public:
  virtual ~StatsPrinter() = default;

  // The session is at the step. Throws CommandError when the output cannot be written.
  virtual void print(const host::Session& session, const std::vector<VariableStatistics>& found) = 0;
  // Must be called last, with what could not be read.
  virtual void finish(const std::vector<std::string>& problems) = 0;
};

std::unique_ptr<StatsPrinter> make_stats_text(Output& output);
// The object of the manual in command_stats.cpp; `file` is its "file".
std::unique_ptr<StatsPrinter> make_stats_json(Output& output, const std::string& file);
// A header line, then a line per step, part, variable and component.
std::unique_ptr<StatsPrinter> make_stats_csv(Output& output);

}  // namespace tool
