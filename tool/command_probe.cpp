// fldtool probe
#include <algorithm>
#include <memory>
#include <optional>
#include <string>
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
#include "tool/jobs.h"
#include "tool/named_values.h"
#include "tool/output.h"
#include "tool/probe_points.h"
#include "tool/probe_printer.h"
#include "tool/probed_step_json.h"
#include "tool/prober.h"
#include "tool/problems.h"
#include "tool/progress.h"
#include "tool/quantity.h"
#include "tool/read_error.h"

namespace tool {
namespace {

constexpr char kProbeManual[] =
    R"(Prints the values of variables at points: those of --at, along --line, and of the table of --at-file, which is a CSV file
with columns x, y and z, or with points in its first three columns. Coordinates are Cartesian, in the units of the file.

The element of the whole mesh that contains the point answers, with the shape functions of its kind; a value per element
is that of the element. A point in no element is 'outside' and has no values. A point that lies outside by less than a
millionth of the mesh's size counts as one of its surface. A value is undefined, and left empty, where one of the nodes
that share in it has none.

On overset meshes several region sets may have the point. The set with the smallest element answers, unless one of the
element's nodes is blanked, that is, without a value of all variables per node that are asked for: then it is the next set.
A point that only such elements contain is 'blanked'.

csv   A header line, then a line per step and point: step, time, point (from 1), x, y, z, distance (from the beginning of
      the line, if there is one), found (inside, blanked or outside), region_set (from 0), element (its number in the whole
      mesh of that set, from 1), and the values: one column with the name of the scalar, or three with _x, _y and _z after
      the vector's name.
json  One JSON object, of which docs/probe.schema.json is the schema:
        file        the file as given
        columns     per column of values: name, label
        points      per point: at, and distance on the line
        steps       per step that could be read: step, time, answers
        answers     per point: found, region_set, element (null without one), values (null where undefined)
        problems    what could not be read, in words; the exit status is then 3
npy   A NumPy file: a two-dimensional float64 array with a row per step and point: step, time, point, x, y, z, distance (if
      there is a line), region set, and the values. What is not there is NaN.

--plot draws the values along --line into a .png or .svg file as well, a line per step; 'fldtool plot' does it with a table.
Where the mesh does not move, the points are looked for once. Without --output, the table goes to the standard output
stream.

)";

enum class ProbeFormat { csv, json, npy };

struct ProbeOptions {
  DatasetOptions dataset;
  PointOptions points;
  std::vector<std::string> steps;
  std::vector<std::string> variables;
  std::string output;
  std::optional<ProbeFormat> format;
  ChartTexts plot;
  bool json = false;
  int jobs = 0;
};

ProbeFormat format_of(const ProbeOptions& options) {
  if (options.json) return ProbeFormat::json;
  if (options.format) return *options.format;
  check_extension(options.output, {".csv", ".json", ".npy"});
  const std::string extension = extension_of(options.output);
  if (extension == ".npy") return ProbeFormat::npy;
  return extension == ".json" ? ProbeFormat::json : ProbeFormat::csv;
}

std::unique_ptr<ProbePrinter> make_printer(ProbeFormat format, const ProbeTable& table) {
  switch (format) {
    case ProbeFormat::json:
      return make_probe_json(table);
    case ProbeFormat::npy:
      return make_probe_npy(table);
    default:
      return make_probe_csv(table);
  }
}

class ProbeRun {
 public:
  ProbeRun(const ProbeOptions& options, ProbeFormat format, host::Session& session)
      : options_(options),
        session_(session),
        steps_(choose_steps(session, options.steps)),
        table_{options.dataset.file,
               read_points(options.points),
               choose_quantities(session, options.variables),
               {}},
        prober_(session, table_.quantities, table_.points.points),
        printer_(make_printer(format, table_)),
        jobs_(usable_jobs(options.jobs, steps_.size(), memory_of_step(session, steps_))) {
    table_.columns = prober_.columns();
  }

  void run() {
    Progress progress("probe", steps_.size(), ProgressUnit::steps);
    progress.update(0);
    if (jobs_ > 1) prepare();
    Output output(options_.output);
    output.write(printer_->beginning());
    Problems problems;
    run_jobs(
        jobs_, steps_.size(), [&](std::size_t i) { return report_on(steps_[i]); },
        [&](std::size_t i, const Json& report) {
          problems.add(report.at("problems").get<std::vector<std::string>>());
          if (report.contains("rows")) {
            if (output.is_terminal()) progress.erase();
            const ProbedStep found = probed_step(report.at("rows"));
            const auto step = static_cast<std::size_t>(steps_[i]);
            output.write(printer_->step(steps_[i], session_.variable_times().times[step], found));
            if (!options_.plot.output.empty()) add_to_chart(steps_[i], found);
          }
          progress.update(i + 1);
          return !report.at("is_lost").get<bool>();
        });
    progress.erase();
    output.write(printer_->end(problems.texts()));
    output.finish();
    if (!options_.plot.output.empty()) draw_chart();
    problems.report();
  }

 private:
  // What the other processes would each do again. Threads do not survive in them.
  void prepare() {
    vtkSMPTools::SetBackend("Sequential");
    if (session_.changing_geometry() != host::ChangingGeometry::fixed) return;
    try {
      session_.select_step(steps_.front());
      prober_.locate();
    } catch (const host::Error&) {
      // The step reports it when it gets there.
      return;
    }
  }

  // The rows of a step, unless it cannot be read, and what could not be read of it.
  Json report_on(int step) {
    Json report;
    Problems problems;
    try {
      session_.select_step(step);
      report["rows"] = as_json(prober_.probe(problems));
    } catch (const host::Error& error) {
      problems.add(read_problem(error, session_).text());
    }
    report["problems"] = problems.take();
    report["is_lost"] = session_.is_lost();
    return report;
  }

  // A line per step and column over the distance on the line.
  void add_to_chart(int step, const ProbedStep& found) {
    const std::size_t columns = table_.columns.size();
    for (std::size_t c = 0; c < columns; ++c) {
      render::ChartSeries& series = chart_.series.emplace_back();
      series.name = table_.columns[c].name;
      if (steps_.size() > 1) series.name += fmt::format(", step {}", step);
      for (std::size_t i = *table_.points.line_from; i < table_.points.line_end; ++i) {
        series.x.push_back(*table_.points.distance(i));
        series.y.push_back(found.values[i * columns + c]);
      }
    }
  }

  void draw_chart() {
    chart_.x_title = "distance";
    chart_.title = host::without_controls(host::message_to_utf8(session_.path().filename().string()));
    const auto label_of = [&](const ProbeColumn& column) {
      const host::Variable& variable = table_.quantities[column.quantity].variable;
      return chart_title_of(host::printable(variable.name), host::printable(variable.label));
    };
    const std::string label = label_of(table_.columns.front());
    const auto is_other = [&](const ProbeColumn& column) { return label_of(column) != label; };
    if (std::none_of(table_.columns.begin(), table_.columns.end(), is_other)) chart_.y_title = label;
    write_chart(options_.plot.output, chart_);
  }

  const ProbeOptions& options_;
  host::Session& session_;
  std::vector<int> steps_;
  ProbeTable table_;
  Prober prober_;
  std::unique_ptr<ProbePrinter> printer_;
  render::Chart chart_;
  int jobs_;
};

void run_probe(const ProbeOptions& options) {
  const ProbeFormat format = format_of(options);
  check_chart_output(options.plot.output);
  if (!options.plot.output.empty() && options.points.line.empty())
    throw CommandError(ExitStatus::usage, "--plot draws values along a line: give --line");
  vtkObject::GlobalWarningDisplayOff();  // errors are reported in one line
  with_dataset(options.dataset, [&](host::Session& session) { ProbeRun(options, format, session).run(); });
}

}  // namespace

void add_probe_command(CLI::App& app) {
  const auto options = std::make_shared<ProbeOptions>();
  CLI::App* command = app.add_subcommand("probe", "Print values at points or along a line");
  add_dataset_options(*command, options->dataset);
  add_point_options(*command, options->points);
  add_steps_option(*command, options->steps, "The steps (default: all)");
  add_variables_option(*command, options->variables, "The variables: NAME, NAME.x, ... (default: all)");
  command
      ->add_option("-o,--output", options->output,
                   "The .csv, .json or .npy file to write; - is the standard output stream")
      ->check(file_name());
  CLI::Option* json = command->add_flag("--json", options->json, "Print JSON for programs");
  command
      ->add_option("--format", options->format,
                   "csv, json or npy, whatever the name of the output (default: by the name)")
      ->transform(named_values<ProbeFormat>(
          {{"csv", ProbeFormat::csv}, {"json", ProbeFormat::json}, {"npy", ProbeFormat::npy}}))
      ->excludes(json);
  add_plot_option(*command, options->plot);
  add_jobs_option(*command, options->jobs);
  command->footer(std::string(kProbeManual) + kDerivedText + kChoiceText + kExitStatusText);
  command->callback([options] { run_probe(*options); });
}

}  // namespace tool
