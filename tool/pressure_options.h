// The options that say what forces are computed of.
#pragma once

#include <string>

#include "host/session.h"
#include "tool/cli_names.h"
#include "tool/part_integrals.h"

namespace tool {

struct PressureTexts {
  std::string pressure;  // empty: the usual one
  std::string reference;
  std::string about = "0,0,0";
};

// Adds --pressure, --reference-pressure and --about to a command.
void add_pressure_options(CLI::App& command, PressureTexts& texts);

// Throws CommandError (wrong usage) for what is no scalar, number or point.
PressureOptions read_pressure(const PressureTexts& texts, host::Session& session);

}  // namespace tool
