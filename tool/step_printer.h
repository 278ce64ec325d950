// Commands that print what they find step by step, with --jobs in several processes.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "host/session.h"
#include "tool/jobs.h"
#include "tool/json_values.h"
#include "tool/output.h"
#include "tool/problems.h"
#include "tool/progress.h"

namespace tool {

// Texts of the output around those of the steps, in the order in which they are written.
class PrintedFrame {
 public:
  virtual ~PrintedFrame() = default;

  virtual std::string beginning() const { return {}; }
  // Between two steps.
  virtual std::string separator() const { return {}; }
  // With what could not be read.
  virtual std::string end(const std::vector<std::string>& /*problems*/) const { return {}; }
};

// A form in which what is found at a step is printed.
template <class Found>
class StepPrinter : public PrintedFrame {
 public:
  // The session is at the step.
  virtual std::string step(const host::Session& session, const std::vector<Found>& found) = 0;
};

// How the steps are reported on.
struct StepReports {
  int jobs = 1;
  std::size_t steps = 0;
  std::size_t progress_per_step = 0;
  // The report on a step, an object: "text" (as_bytes; absent when the step cannot be read), "problems" and
  // "is_lost".
  std::function<Json(std::size_t)> report_on;
  // Called with each report that has a text; may be empty.
  std::function<void(const Json&)> take = {};
};

// Writes everything to the output and finishes it. Returns what could not be read, for the caller to report.
Problems print_steps(const StepReports& reports, const PrintedFrame& frame, Output& output,
                     Progress& progress);

}  // namespace tool
