// The forms in which `fldtool stats` prints what it finds: text, JSON and comma-separated lines.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/session.h"
#include "tool/coordinate_names.h"
#include "tool/part_statistics.h"

namespace tool {

// One variable of the session's step on its parts.
struct VariableStatistics {
  host::Variable variable;
  std::vector<PartStatistics> parts;
};

// Texts of the output, in the order in which they are written.
class StatsPrinter {
 public:
  virtual ~StatsPrinter() = default;

  virtual std::string beginning() const { return {}; }
  // The session is at the step.
  virtual std::string step(const host::Session& session, const std::vector<VariableStatistics>& found) = 0;
  // Between two steps.
  virtual std::string separator() const { return {}; }
  // With what could not be read.
  virtual std::string end(const std::vector<std::string>& problems) const;
};

std::unique_ptr<StatsPrinter> make_stats_text();
// The object of the manual in command_stats.cpp; `file` is its "file".
std::unique_ptr<StatsPrinter> make_stats_json(const std::string& file);
// A header line, then a line per step, part, variable and component.
std::unique_ptr<StatsPrinter> make_stats_csv();

}  // namespace tool
