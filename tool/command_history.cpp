// fldtool history
#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
#include <vtkObject.h>
#include <vtkSMPTools.h>

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
#include "tool/history_source.h"
#include "tool/jobs.h"
#include "tool/output.h"
#include "tool/pressure_options.h"
#include "tool/probe_points.h"
#include "tool/prober.h"
#include "tool/problems.h"
#include "tool/progress.h"
#include "tool/quantity.h"
#include "tool/read_error.h"
#include "tool/value_writer.h"

namespace tool {
namespace {

constexpr char kHistoryManual[] =
    R"(Prints a row of numbers per step: values at points, as 'fldtool probe' finds them, with --at, --line or --at-file;
statistics, as 'fldtool stats' computes them, with --stats; and integrals, as 'fldtool integrate' computes them, with
--integrate. At least one of these is needed, and several may be given. Points are looked for in the whole mesh; statistics
and integrals are those of each part of --parts.

--stats takes minimum, maximum, mean, deviation and undefined (how many values are), with commas in between.
--integrate takes measure (the area or volume), integral, mean (weighted by area or volume), flow (of vectors through
surfaces, out of the volume), force and moment (of the pressure), with commas in between. The manuals of these commands
say what the numbers mean, and what the pressure is.

The table is comma-separated: a header line, then step, time and the numbers, which are called 'p at (0 0 1)',
'mean of p on inlet', 'integral of p over inlet', 'flow of U through inlet', 'force_x on inlet'. What is not there is left
empty. --json prints one JSON object, of which docs/history.schema.json is the schema:
  file           the file as given
  columns        per column: name, label (of the variable)
  steps          per step that could be read: step, time, values (null where there is none)
  problems       what could not be read, in words; the exit status is then 3
--plot draws the numbers over the time into a .png or .svg file as well; 'fldtool plot' does it with a table.
Where the mesh does not move, a step reads the variables that are asked for and nothing else.

)";

struct HistoryOptions {
  DatasetOptions dataset;
  PointOptions points;
  std::vector<std::string> steps;
  std::vector<std::string> parts;
  std::vector<std::string> variables;
  std::vector<std::string> statistics;
  std::vector<std::string> integrals;
  PressureTexts pressure;
  std::string output;
  ChartTexts plot;
  bool json = false;
  int jobs = 0;
};

// The words of lists separated by commas. Throws CommandError for one that is not known.
template <std::size_t Count>
std::vector<std::string> words_of(const char* option, const std::vector<std::string>& lists,
                                  const char* const (&known)[Count]) {
  std::vector<std::string> words;
  for (const std::string& list : lists) {
    for (std::string_view rest = list;; rest.remove_prefix(rest.find(',') + 1)) {
      std::string_view word = rest.substr(0, rest.find(','));
      while (word.starts_with(' ')) word.remove_prefix(1);
      while (word.ends_with(' ')) word.remove_suffix(1);
      if (std::find(std::begin(known), std::end(known), word) == std::end(known)) {
        throw CommandError(ExitStatus::usage,
                           fmt::format("{}: '{}' is none of {}", option, word, fmt::join(known, ", ")));
      }
      words.emplace_back(word);
      if (rest.find(',') == std::string_view::npos) break;
    }
  }
  return words;
}

class PointSource : public HistorySource {
 public:
  PointSource(host::Session& session, std::vector<Quantity> quantities,
              const std::vector<analysis::Vec3>& points)
      : prober_(session, quantities, points) {
    for (const analysis::Vec3& at : points) {
      for (const ProbeColumn& column : prober_.columns()) {
        columns_.push_back({fmt::format("{} at ({} {} {})", column.name, at[0], at[1], at[2]),
                            host::printable(quantities[column.quantity].variable.label)});
      }
    }
  }

  const std::vector<HistoryColumn>& columns() const override { return columns_; }
  void prepare() override { prober_.locate(); }

  void add_row(std::vector<double>& row, Problems& problems) override {
    const ProbedStep found = prober_.probe(problems);
    // Values are as exact as single precision.
    for (const double value : found.values) row.push_back(static_cast<double>(static_cast<float>(value)));
  }

 private:
  Prober prober_;
  std::vector<HistoryColumn> columns_;
};

bool has_points(const PointOptions& options) {
  return !options.at.empty() || !options.line.empty() || !options.table.empty();
}

std::vector<std::unique_ptr<HistorySource>> make_sources(const HistoryOptions& options,
                                                         host::Session& session) {
  const std::vector<std::string> statistics = words_of("--stats", options.statistics, kStatisticWords);
  const std::vector<std::string> integrals = words_of("--integrate", options.integrals, kIntegralWords);
  std::vector<std::unique_ptr<HistorySource>> sources;
  const std::vector<Quantity> quantities = choose_quantities(session, options.variables);
  if (has_points(options.points))
    sources.push_back(std::make_unique<PointSource>(session, quantities, read_points(options.points).points));
  if (sources.empty() && statistics.empty() && integrals.empty())
    throw CommandError(ExitStatus::usage, "there is no number to print: give --at, --stats or --integrate");
  if (statistics.empty() && integrals.empty()) return sources;
  if (options.parts.empty())
    throw CommandError(ExitStatus::usage, "--stats and --integrate need parts: give --parts");
  const HistoryParts parts(session, choose_parts(session, options.parts));
  if (!statistics.empty()) sources.push_back(make_statistics_source(session, quantities, parts, statistics));
  if (!integrals.empty()) {
    sources.push_back(make_integral_source(session, quantities, parts, integrals,
                                           read_pressure(options.pressure, session)));
  }
  return sources;
}

class HistoryRun {
 public:
  HistoryRun(const HistoryOptions& options, host::Session& session)
      : options_(options),
        session_(session),
        steps_(choose_steps(session, options.steps)),
        sources_(make_sources(options, at_first_step())),
        jobs_(usable_jobs(options.jobs, steps_.size(), memory_of_step(session, steps_))) {
    for (const auto& source : sources_)
      columns_.insert(columns_.end(), source->columns().begin(), source->columns().end());
    begin_chart();
  }

  void run() {
    Progress progress("history", steps_.size(), ProgressUnit::steps);
    progress.update(0);
    if (jobs_ > 1) prepare();
    Output output(options_.output);
    output.write(beginning());
    Problems problems;
    bool is_first = true;
    run_jobs(
        jobs_, steps_.size(), [&](std::size_t i) { return report_on(steps_[i]); },
        [&](std::size_t i, const Json& report) {
          problems.add(report.at("problems").get<std::vector<std::string>>());
          if (report.contains("row")) {
            if (output.is_terminal()) progress.erase();
            const std::vector<double> row = row_of(report.at("row"));
            output.write(row_text(steps_[i], row, std::exchange(is_first, false)));
            add_to_chart(steps_[i], row);
          }
          progress.update(i + 1);
          return !report.at("is_lost").get<bool>();
        });
    progress.erase();
    if (is_json()) output.write(fmt::format("\n],\n\"problems\": {}\n}}\n", json_text(problems.texts(), -1)));
    output.finish();
    if (!options_.plot.output.empty()) write_chart(options_.plot.output, chart_);
    problems.report();
  }

 private:
  host::Session& at_first_step() {
    session_.select_step(steps_.front());
    return session_;
  }

  bool is_json() const { return options_.json || extension_of(options_.output) == ".json"; }

  // What the other processes would each do again. Threads do not survive in them.
  void prepare() {
    vtkSMPTools::SetBackend("Sequential");
    if (session_.changing_geometry() == host::ChangingGeometry::connectivity) return;
    try {
      for (const auto& source : sources_) source->prepare();
    } catch (const host::Error&) {
      // The step reports it when it gets there.
      return;
    }
  }

  std::string beginning() const {
    if (is_json()) {
      Json columns = Json::array();
      for (const HistoryColumn& column : columns_)
        columns.push_back({{"name", column.name}, {"label", column.label}});
      return fmt::format("{{\n\"file\": {},\n\"columns\": {},\n\"steps\": [\n",
                         json_text(options_.dataset.file), json_text(columns));
    }
    std::string header = "step,time";
    for (const HistoryColumn& column : columns_) header += "," + csv_field(column.name);
    return header + "\n";
  }

  std::string row_text(int step, const std::vector<double>& row, bool is_first) const {
    const float time = session_.variable_times().times[static_cast<std::size_t>(step)];
    if (is_json()) {
      Json values = Json::array();
      for (const double value : row) values.push_back(json_number(value));
      const Json json{{"step", step}, {"time", json_number(time)}, {"values", std::move(values)}};
      return (is_first ? "" : ",\n") + json_text(json, -1);
    }
    std::string text = fmt::format("{},{}", step, time);
    for (const double value : row) text += std::isnan(value) ? "," : "," + number_text(value);
    return text + "\n";
  }

  // In the fewest digits, those of single precision where that is all there is.
  static std::string number_text(double value) {
    const auto narrow = static_cast<float>(value);
    return static_cast<double>(narrow) == value ? fmt::format("{}", narrow) : fmt::format("{}", value);
  }

  static std::vector<double> row_of(const Json& bytes) {
    const std::string text = text_of(bytes);
    std::vector<double> row(text.size() / sizeof(double));
    if (!row.empty()) std::memcpy(row.data(), text.data(), text.size());
    return row;
  }

  // The row of a step, unless it cannot be read, and what could not be read of it.
  Json report_on(int step) {
    Json report;
    Problems problems;
    try {
      session_.select_step(step);
      std::vector<double> row;
      for (const auto& source : sources_) source->add_row(row, problems);
      report["row"] = as_bytes({reinterpret_cast<const char*>(row.data()), row.size() * sizeof(double)});
    } catch (const host::Error& error) {
      problems.add(read_problem(error, session_).text());
    }
    report["problems"] = problems.take();
    report["is_lost"] = session_.is_lost();
    return report;
  }

  // A line per column over the time.
  void begin_chart() {
    chart_.x_title = "time";
    chart_.title = host::without_controls(host::message_to_utf8(session_.path().filename().string()));
    for (const HistoryColumn& column : columns_) chart_.series.push_back({column.name, {}, {}});
    if (columns_.size() == 1) chart_.y_title = columns_.front().name;
    const auto has_other_label = [&](const HistoryColumn& column) {
      return column.label.empty() || column.label != columns_.front().label;
    };
    if (std::none_of(columns_.begin(), columns_.end(), has_other_label))
      chart_.y_title = columns_.front().label;
  }

  void add_to_chart(int step, const std::vector<double>& row) {
    const float time = session_.variable_times().times[static_cast<std::size_t>(step)];
    for (std::size_t i = 0; i < row.size(); ++i) {
      chart_.series[i].x.push_back(static_cast<double>(time));
      chart_.series[i].y.push_back(row[i]);
    }
  }

  const HistoryOptions& options_;
  host::Session& session_;
  std::vector<int> steps_;
  std::vector<std::unique_ptr<HistorySource>> sources_;
  std::vector<HistoryColumn> columns_;
  render::Chart chart_;
  int jobs_;
};

void run_history(const HistoryOptions& options) {
  if (!options.json) check_extension(options.output, {".csv", ".json"});
  check_chart_output(options.plot.output);
  vtkObject::GlobalWarningDisplayOff();  // errors are reported in one line
  with_dataset(options.dataset, [&](host::Session& session) { HistoryRun(options, session).run(); });
}

}  // namespace

void add_history_command(CLI::App& app) {
  const auto options = std::make_shared<HistoryOptions>();
  CLI::App* command = app.add_subcommand("history", "Print a row of numbers per step");
  add_dataset_options(*command, options->dataset);
  add_point_options(*command, options->points);
  add_list_option(*command, "--stats", options->statistics, "Statistics of the parts: minimum, mean, ...");
  add_list_option(*command, "--integrate", options->integrals,
                  "Integrals over the parts: mean, flow, force, ...");
  add_steps_option(*command, options->steps, "The steps (default: all)");
  add_parts_option(*command, options->parts, "The parts, for --stats and --integrate");
  add_variables_option(*command, options->variables, "The variables: NAME, NAME.x, ... (default: all)");
  add_pressure_options(*command, options->pressure);
  command
      ->add_option("-o,--output", options->output,
                   "The .csv or .json file to write; - is the standard output stream")
      ->check(file_name());
  command->add_flag("--json", options->json, "Print JSON for programs");
  add_plot_option(*command, options->plot);
  add_jobs_option(*command, options->jobs);
  command->footer(std::string(kHistoryManual) + kDerivedText + kChoiceText + kExitStatusText);
  command->callback([options] { run_history(*options); });
}

}  // namespace tool
