#include "tool/pressure_options.h"

#include <optional>
#include <vector>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "tool/choice.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/point_text.h"
#include "tool/quantity.h"
#include "tool/vector_components.h"

namespace tool {
namespace {

// Whether a quantity is one number per node or element.
bool is_number(const Quantity& quantity) {
  return quantity.variable.kind == host::VariableKind::scalar ||
         (quantity.component && *quantity.component != kMagnitude);
}

}  // namespace

void add_pressure_options(CLI::App& command, PressureTexts& texts) {
  command
      .add_option("--pressure", texts.pressure,
                  "The scalar to compute forces of, or none (default: p, pres or pressure)")
      ->check(not_empty());
  command.add_option("--reference-pressure", texts.reference, "Subtracted from the pressure (default: 0)")
      ->check(not_empty());
  command.add_option("--about", texts.about, "X,Y,Z: the point that moments are about")
      ->default_str(texts.about);
}

PressureOptions read_pressure(const PressureTexts& texts, host::Session& session) {
  PressureOptions pressure;
  pressure.about = point_of_option("--about", texts.about);
  if (!texts.reference.empty()) {
    const std::optional<double> reference = parse_real(texts.reference);
    if (!reference) {
      throw CommandError(ExitStatus::usage,
                         fmt::format("--reference-pressure: '{}' is not a number", texts.reference));
    }
    pressure.reference = *reference;
  }
  if (texts.pressure.empty()) {
    pressure.pressure = usual_pressure(session);
  } else if (texts.pressure != "none" || is_variable(session, texts.pressure)) {
    const std::vector<Quantity> chosen = choose_quantities(session, {texts.pressure});
    if (chosen.size() != 1 || !is_number(chosen.front())) {
      throw CommandError(ExitStatus::usage, session.path().string(),
                         fmt::format("--pressure: '{}' is not a scalar", texts.pressure));
    }
    pressure.pressure = chosen.front();
  }
  return pressure;
}

}  // namespace tool
