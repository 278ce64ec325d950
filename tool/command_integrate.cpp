// fldtool integrate
#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "CLI/CLI.hpp"
#include "host/error.h"
#include "host/text_encoding.h"
#include "nlohmann/json.hpp"
#include "tool/choice.h"
#include "tool/commands.h"
#include "tool/dataset_options.h"
#include "tool/exit_status.h"
#include "tool/integrals_printer.h"
#include "tool/interrupt.h"
#include "tool/jobs.h"
#include "tool/output.h"
#include "tool/part_integrals.h"
#include "tool/pressure_options.h"
#include "tool/problems.h"
#include "tool/program.h"
#include "tool/progress.h"
#include "tool/quantity.h"
#include "tool/read_error.h"

namespace tool {
namespace {

constexpr char kIntegrateManual[] =
    R"(Integrates variables over parts. Of a surface: its area; per variable the integral and the mean weighted by area; of a
vector also the integral of vector dot normal, the flow rate ('normal'); and the force of the pressure with its moment.
Of a volume: its volume, integrals, and means weighted by volume. All in the units of the file.

Values per node are linear on the triangles and tetrahedra into which elements are cut, as in VTK's integration of
attributes, so areas and volumes are those of the facets, and linear fields are integrated exactly. An element with an
undefined value, or one that is NaN, is left out of an integral: the table shows how many nodes (or elements, for a
variable per element) have none, how many elements are left out, and the area or volume of the rest, by which the integral
is divided to give the mean.

Normals point out of the volume that owns the face. The owner is found by geometry: it is the element of the whole mesh that
has the face's corners. 'faces turned' are those that the file has the other way round. Where two elements have a face
(it lies inside the volume), or none has it, the normal is that of the corners' order in the file; such faces are
counted too. A positive flow rate is flow out of the volume.

The force is the integral of pressure times normal: what the fluid exerts on a wall. The pressure is the scalar called p,
pres or pressure, if there is just one, or the one of --pressure; --pressure none leaves forces out. --reference-pressure
is subtracted from it. The moment is about the point of --about. A kinematic pressure gives the force divided by the
density.

--csv prints a header line, then a line per step, part, variable and component:
  step, time, part (its number), kind, name, elements, measure (area or volume), variable, component (x, y, z, magnitude,
  normal; force_x to moment_z in lines of the pressure; area_x to area_z: the sum of area times normal), integral, mean,
  with_values (area or volume of the elements with values), undefined, left_out. What is unknown is left empty.

--json prints one JSON object, of which docs/integrate.schema.json is the schema:
  file           the file as given
  steps          per step that could be read: step, time, parts
  parts          per part: part (its number), kind, name, elements, area or volume, variables; of a surface vector_area (the
                 sum of area times normal), faces (turned, inside, without_element), and force unless there is no pressure
  variables      per variable: number (null of a derived one), name, label, per, availability, reason (if failed), components
  components     component (x, y, z, magnitude or normal; null of a scalar), integral, mean (null without values), measure,
                 undefined, left_out
  force          pressure (its name), reference_pressure, force, about, moment, measure, undefined, left_out
  problems       what could not be read, in words; the exit status is then 3
A step that cannot be read is left out and the others go on, unless an assertion of the reader failed.

)";

struct IntegrateOptions {
  DatasetOptions dataset;
  std::vector<std::string> steps;
  std::vector<std::string> parts = {"surfaces", "volumes"};
  std::vector<std::string> variables;
  PressureTexts pressure;
  int jobs = 0;
  bool json = false;
  bool csv = false;
};

class IntegrateRun {
 public:
  IntegrateRun(const IntegrateOptions& options, host::Session& session)
      : options_(options),
        session_(session),
        steps_(choose_steps(session, options.steps)),
        quantities_(choose_quantities(session, options.variables)),
        has_first_step_(select_step(session, steps_.front(), problems_)),
        parts_(choose_parts(session, options.parts)),
        integrator_(session, read_pressure(options.pressure, session)),
        progress_("integrate", steps_.size() * parts_.size(), ProgressUnit::steps),
        printer_(make_printer()) {}

  void run() {
    // Before other processes are made, so that each has them.
    const int jobs = usable_jobs(options_.jobs, steps_.size(), memory_of_step(session_, steps_));
    if (has_first_step_ && jobs > 1) find_directions();
    const auto report = [&](std::size_t i) { return report_on(steps_[i]); };
    Output output("");
    print_steps({jobs, steps_.size(), parts_.size(), report}, *printer_, output, progress_).report();
  }

 private:
  std::unique_ptr<IntegralsPrinter> make_printer() const {
    if (options_.json) return make_integrals_json(integrator_.pressure(), options_.dataset.file);
    return options_.csv ? make_integrals_csv(integrator_.pressure())
                        : make_integrals_text(integrator_.pressure());
  }

  void find_directions() {
    try {
      integrator_.find_directions(parts_.at(session_));
      has_directions_ = true;
    } catch (const host::Error&) {
      // The step reports it when it gets there.
      return;
    }
  }

  // The text about a step, unless it cannot be selected, and what could not be read of it.
  Json report_on(int step) {
    Json report;
    if (step == steps_.front() ? has_first_step_ : select_step(session_, step, problems_)) {
      parts_.tell_missing(session_, progress_);
      if (!has_directions_) find_directions();
      report["text"] = as_bytes(printer_->step(session_, integrals()));
    }
    report["problems"] = problems_.take();
    report["is_lost"] = session_.is_lost();
    return report;
  }

  std::vector<PartIntegrals> integrals() {
    std::vector<PartIntegrals> found;
    for (const int part : parts_.at(session_)) {
      stop_if_interrupted();
      progress_.update(done_++);
      const bool was_lost = session_.is_lost();
      try {
        found.push_back(integrator_.integrate(quantities_, part));
      } catch (const host::Error& error) {
        problems_.add(read_problem(error, session_).text());
        if (session_.is_lost()) return found;
        continue;
      }
      for (const QuantityIntegrals& quantity : found.back().quantities) {
        if (quantity.availability != host::Availability::failed || was_lost) continue;
        const std::string name = "variable " + host::to_utf8(quantity.variable.name);
        problems_.add(read_problem(quantity.failed, session_, name).text());
      }
    }
    return found;
  }

  const IntegrateOptions& options_;
  host::Session& session_;
  Problems problems_;  // of the step
  std::vector<int> steps_;
  std::vector<Quantity> quantities_;
  bool has_first_step_;
  bool has_directions_ = false;
  ChosenParts parts_;
  PartIntegrator integrator_;
  Progress progress_;
  std::unique_ptr<IntegralsPrinter> printer_;
  std::uint64_t done_ = 0;
};

void run_integrate(const IntegrateOptions& options) {
  if (may_be_derived(options.variables)) need_vtk();
  with_dataset(options.dataset, [&](host::Session& session) { IntegrateRun(options, session).run(); });
}

}  // namespace

void add_integrate_command(CLI::App& app) {
  const auto options = std::make_shared<IntegrateOptions>();
  CLI::App* command =
      app.add_subcommand("integrate", "Print areas, volumes, integrals, flow rates and forces");
  add_dataset_options(*command, options->dataset);
  add_steps_option(*command, options->steps, "The steps (default: all)");
  add_parts_option(*command, options->parts, "The parts");
  add_variables_option(*command, options->variables, "The variables: NAME, NAME.x, ... (default: all)");
  add_pressure_options(*command, options->pressure);
  CLI::Option* json = command->add_flag("--json", options->json, "Print JSON for programs");
  command->add_flag("--csv", options->csv, "Print comma-separated lines")->excludes(json);
  add_jobs_option(*command, options->jobs);
  command->footer(std::string(kIntegrateManual) + kDerivedText + kChoiceText + kExitStatusText);
  command->callback([options] { run_integrate(*options); });
}

}  // namespace tool
