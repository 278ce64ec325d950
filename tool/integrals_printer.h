// The forms in which `fldtool integrate` prints what it finds: text, JSON and comma-separated lines.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/session.h"
#include "tool/part_integrals.h"

namespace tool {

// Texts of the output, in the order in which they are written.
class IntegralsPrinter {
 public:
  virtual ~IntegralsPrinter() = default;

  virtual std::string beginning() const { return {}; }
  // The session is at the step.
  virtual std::string step(const host::Session& session, const std::vector<PartIntegrals>& found) = 0;
  // Between two steps.
  virtual std::string separator() const { return {}; }
  // With what could not be read.
  virtual std::string end(const std::vector<std::string>& /*problems*/) const { return {}; }
};

std::unique_ptr<IntegralsPrinter> make_integrals_text(const PressureOptions& pressure);
// The object of the manual in command_integrate.cpp; `file` is its "file".
std::unique_ptr<IntegralsPrinter> make_integrals_json(const PressureOptions& pressure,
                                                      const std::string& file);
// A header line, then a line per step, part, variable and component.
std::unique_ptr<IntegralsPrinter> make_integrals_csv(const PressureOptions& pressure);

}  // namespace tool
