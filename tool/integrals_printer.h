// The forms in which `fldtool integrate` prints what it finds: text, JSON and comma-separated lines.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/session.h"
#include "tool/part_integrals.h"
#include "tool/step_printer.h"

namespace tool {

using IntegralsPrinter = StepPrinter<PartIntegrals>;

std::unique_ptr<IntegralsPrinter> make_integrals_text(const PressureOptions& pressure);
// The object of the manual in command_integrate.cpp; `file` is its "file".
std::unique_ptr<IntegralsPrinter> make_integrals_json(const PressureOptions& pressure,
                                                      const std::string& file);
// A header line, then a line per step, part, variable and component.
std::unique_ptr<IntegralsPrinter> make_integrals_csv(const PressureOptions& pressure);

}  // namespace tool
