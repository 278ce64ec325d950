#include "tool/step_printer.h"

#include "nlohmann/json.hpp"

namespace tool {

Problems print_steps(const StepReports& reports, const PrintedFrame& frame, Output& output,
                     Progress& progress) {
  Problems problems;
  bool any = false;
  output.write(frame.beginning());
  progress.update(0);
  run_jobs(reports.jobs, reports.steps, reports.report_on, [&](std::size_t i, const Json& report) {
    progress.update((i + 1) * reports.progress_per_step);
    problems.add(report.at("problems").get<std::vector<std::string>>());
    if (report.contains("text")) {
      progress.erase();
      output.write((any ? frame.separator() : "") + text_of(report.at("text")));
      any = true;
      if (reports.take) reports.take(report);
    }
    return !report.at("is_lost").get<bool>();
  });
  progress.erase();
  output.write(frame.end(problems.texts()));
  output.finish();
  return problems;
}

}  // namespace tool
