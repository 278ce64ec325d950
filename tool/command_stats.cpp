// fldtool stats
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "host/error.h"
#include "host/text_encoding.h"
#include "nlohmann/json.hpp"
#include "tool/chart_output.h"
#include "tool/choice.h"
#include "tool/commands.h"
#include "tool/dataset_options.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/interrupt.h"
#include "tool/jobs.h"
#include "tool/number_range.h"
#include "tool/output.h"
#include "tool/part_statistics.h"
#include "tool/problems.h"
#include "tool/program.h"
#include "tool/progress.h"
#include "tool/quantity.h"
#include "tool/read_error.h"
#include "tool/stats_printer.h"

namespace tool {
namespace {

constexpr char kStatsManual[] =
    R"(Prints statistics of the variables: per step, variable and part the minimum, the maximum, the mean and the standard
deviation, how many values there are, how many of them the file marks as undefined, and how many are NaN. Undefined values
and NaN are left out of the rest. A vector has a line for each of x, y and z, and one for the magnitude; U.x and
U.magnitude are one of them.

The mean is the plain average over the nodes, or over the elements for a variable that is given per element. It is not
weighted by areas or volumes, so regions with small elements count more. The standard deviation is the root of the mean
square of the distances from that mean.

The minimum and the maximum are followed by the node or element where they are first found, with the number that
'fldtool values' gives it, and its coordinates: those of the node, or the mean of those of the element's nodes. They are
r, theta and z on the whole mesh of a mesh in cylindrical coordinates.

--histogram N adds, below every line, how many values there are in N intervals of equal width from the lowest to the highest
finite value.

--plot draws the histograms into a .png or .svg file as well: bars for one, a line each for several.

--csv prints a header line, then one line per step, part and variable, and of a vector per component:
  step, time, part (its number), kind, name, variable, component, per, availability, values, undefined, nan, minimum,
  maximum, mean, deviation, axes (what the coordinates are), minimum_at (the row in 'fldtool values'), minimum_x, _y, _z,
  maximum_at, maximum_x, _y, _z. What is unknown is left empty.

--json prints one JSON object:
  file           the file as given
  steps          per step that could be read: step, time, variables
  variables      per variable: number (null of a derived one), name, label, type (scalar or vector), per (node or element), parts
  parts          per part: part (its number), name, availability (given, not in this step, not offered or failed), reason
                 (if failed), axes (names of the coordinates), components
  components     component (x, y, z or magnitude; null of a scalar), values (how many), minimum, maximum, mean, undefined,
                 not_numbers (NaN), deviation, minimum_at, maximum_at (row, coordinates), and with --histogram: histogram
                 (low, high, counts); null is what there is not without numbers
  problems       what could not be read, in words; the exit status is then 3
A step that cannot be read is left out and the others go on, unless an assertion of the reader failed.

)";

struct StatsOptions {
  DatasetOptions dataset;
  std::vector<std::string> steps;
  std::vector<std::string> parts = {"all"};
  std::vector<std::string> variables;
  std::size_t intervals = 0;
  std::string plot;
  int jobs = 0;
  bool json = false;
  bool csv = false;
};

std::unique_ptr<StatsPrinter> make_printer(const StatsOptions& options) {
  if (options.json) return make_stats_json(options.dataset.file);
  return options.csv ? make_stats_csv() : make_stats_text();
}

// Where the intervals of histograms are and how many values are in them: name, label, x, y each.
Json histogram_bars(const host::Session& session, const std::vector<VariableStatistics>& found) {
  Json all = Json::array();
  for (const VariableStatistics& variable : found) {
    const std::string name = host::printable(variable.variable.name);
    const std::string label = host::printable(variable.variable.label);
    for (const PartStatistics& part : variable.parts) {
      for (const ComponentStatistics& component : part.components) {
        std::vector<double> x;
        for (std::size_t i = 0; i < component.histogram.counts.size(); ++i)
          x.push_back((component.histogram.edge(i) + component.histogram.edge(i + 1)) / 2);
        all.push_back({{"name", fmt::format("{}{}{} on {}, step {}", name,
                                            component.component.empty() ? "" : ".", component.component,
                                            host::printable(session.part(part.part).name), session.step())},
                       {"label", label.empty() ? name : label},
                       {"x", x},
                       {"y", component.histogram.counts}});
      }
    }
  }
  return all;
}

// Goes through steps, variables and parts, in the order in which a reader keeps what it has read, and prints
// each step when it is done.
class StatsRun {
 public:
  StatsRun(const StatsOptions& options, host::Session& session)
      : options_(options),
        session_(session),
        steps_(choose_steps(session, options.steps)),
        variables_(choose_quantities(session, options.variables)),
        has_first_step_(select_step(session, steps_.front(), problems_)),
        parts_(choose_parts(session, options.parts)),
        values_(session),
        progress_("stats", steps_.size() * variables_.size() * parts_.size(), ProgressUnit::steps),
        printer_(make_printer(options)) {}

  void run() {
    const int jobs = usable_jobs(options_.jobs, steps_.size(), memory_of_step(session_, steps_));
    const auto report = [&](std::size_t i) { return report_on(steps_[i]); };
    const auto take = [&](const Json& reported) {
      if (reported.contains("bars"))
        bars_.insert(bars_.end(), reported["bars"].begin(), reported["bars"].end());
    };
    Output output("");
    const Problems problems = print_steps(
        {jobs, steps_.size(), variables_.size() * parts_.size(), report, take}, *printer_, output, progress_);
    if (!options_.plot.empty()) draw_histogram();
    problems.report();
  }

 private:
  // The text about a step, unless it cannot be selected, and what could not be read of it.
  Json report_on(int step) {
    Json report;
    if (step == steps_.front() ? has_first_step_ : select_step(session_, step, problems_)) {
      parts_.tell_missing(session_, progress_);
      const std::vector<VariableStatistics> found = statistics();
      report["text"] = as_bytes(printer_->step(session_, found));
      if (!options_.plot.empty()) report["bars"] = histogram_bars(session_, found);
    }
    report["problems"] = problems_.take();
    report["is_lost"] = session_.is_lost();
    return report;
  }

  std::vector<VariableStatistics> statistics() {
    std::vector<VariableStatistics> found;
    const std::vector<int> parts = parts_.at(session_);
    for (const Quantity& chosen : variables_) {
      found.push_back({chosen.variable, {}});
      const std::string name = "variable " + host::to_utf8(found.back().variable.name);
      for (const int part : parts) {
        stop_if_interrupted();
        progress_.update(done_++);
        const bool was_lost = session_.is_lost();
        found.back().parts.push_back(
            part_statistics(values_, chosen, session_.part(part), options_.intervals));
        const PartStatistics& latest = found.back().parts.back();
        if (latest.availability == host::Availability::failed && !was_lost)
          problems_.add(read_problem(latest.failed, session_, name).text());
      }
    }
    if (!session_.is_lost()) locate_extremes(found);
    return found;
  }

  // Adds the coordinates of the minima and maxima, part by part, so that each part is read once.
  void locate_extremes(std::vector<VariableStatistics>& found) {
    std::map<int, std::vector<std::pair<host::Location, PartStatistics*>>> by_part;
    for (VariableStatistics& variable : found) {
      for (PartStatistics& part : variable.parts)
        by_part[part.part].emplace_back(variable.variable.location, &part);
    }
    for (const auto& [part, statistics] : by_part) {
      stop_if_interrupted();
      try {
        locate(session_, part, statistics);
      } catch (const host::Error& error) {
        problems_.add(read_problem(error, session_).text());
        if (session_.is_lost()) return;
      }
    }
  }

  // Bars of one histogram, or a line for each of several.
  void draw_histogram() const {
    render::Chart chart;
    chart.kind = bars_.size() == 1 ? render::ChartKind::bars : render::ChartKind::lines;
    chart.title = host::without_controls(host::message_to_utf8(session_.path().filename().string()));
    chart.y_title = "values";
    for (const Json& bars : bars_) {
      chart.series.push_back({bars.at("name").get<std::string>(), bars.at("x").get<std::vector<double>>(),
                              bars.at("y").get<std::vector<double>>()});
      if (bars.at("label") == bars_.front().at("label")) continue;
      chart.x_title = "value";
    }
    if (chart.x_title.empty() && !bars_.empty()) chart.x_title = bars_.front().at("label").get<std::string>();
    write_chart(options_.plot, chart);
  }

  const StatsOptions& options_;
  host::Session& session_;
  Problems problems_;  // of the step
  std::vector<int> steps_;
  std::vector<Quantity> variables_;
  bool has_first_step_;
  ChosenParts parts_;
  QuantityValues values_;
  Progress progress_;
  std::vector<Json> bars_;  // of the histograms that are drawn
  std::unique_ptr<StatsPrinter> printer_;
  std::uint64_t done_ = 0;
};

void run_stats(const StatsOptions& options) {
  if (!options.plot.empty() || may_be_derived(options.variables)) need_vtk();
  check_chart_output(options.plot);
  with_dataset(options.dataset, [&](host::Session& session) { StatsRun(options, session).run(); });
}

}  // namespace

void add_stats_command(CLI::App& app) {
  const auto options = std::make_shared<StatsOptions>();
  CLI::App* command = app.add_subcommand("stats", "Print ranges, means and histograms of values");
  add_dataset_options(*command, options->dataset);
  add_steps_option(*command, options->steps, "The steps (default: all)");
  add_parts_option(*command, options->parts, "The parts");
  add_variables_option(*command, options->variables, "The variables: NAME, NAME.x, ... (default: all)");
  CLI::Option* histogram =
      command->add_option("--histogram", options->intervals, "Count the values in this many intervals")
          ->check(whole_number(1, 1000));
  CLI::Option* json = command->add_flag("--json", options->json, "Print JSON for programs");
  command->add_flag("--csv", options->csv, "Print comma-separated lines")
      ->excludes(json)
      ->excludes(histogram);
  command->add_option("--plot", options->plot, "Draw the histograms into this .png or .svg file as well")
      ->check(file_name())
      ->needs(histogram);
  add_jobs_option(*command, options->jobs);
  command->footer(std::string(kStatsManual) + kDerivedText + kChoiceText + kExitStatusText);
  command->callback([options] { run_stats(*options); });
}

}  // namespace tool
