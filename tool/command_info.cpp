// fldtool info
#include <memory>
#include <string>
#include <vector>

#include "CLI/CLI.hpp"
#include "host/error.h"
#include "host/text_encoding.h"
#include "tool/choice.h"
#include "tool/commands.h"
#include "tool/dataset_options.h"
#include "tool/exit_status.h"
#include "tool/output.h"
#include "tool/read_error.h"
#include "tool/remains.h"
#include "tool/summary.h"

namespace tool {
namespace {

constexpr char kInfoManual[] =
    R"(Opens the dataset that FILE belongs to and prints its contents: the steps with their times, cycles and files, the
parts with node and element counts, their groups, and the variables. No values are read for that.

--ranges adds the bounding boxes of the parts, what moves, and the ranges of the variables over the whole mesh; values that
the files mark as undefined are left out of the ranges and counted. The box of a whole mesh in cylindrical coordinates is
that of r, theta and z. --step shows parts and variables at another step than the first; the geometry is the last one at or
before it. --all-steps, or --steps with several, shows the variables of all these steps and the boxes of the parts that
move, with ranges. A part counts as moving when its coordinates differ between the first and the last geometry
step, or between any two with --all-steps; one that only some steps have, between those.

If the reader refuses the dataset, the files of the series that have errors are shown, or FILE if none has: their titles
with the offsets, as far as the file can be followed, and where that ended. The exit status is 3 then. 'fldtool check' says
more about such files.

--json prints one JSON object, which follows docs/info.schema.json; bounds, availability and ranges are there with --ranges
and --all-steps only:
  file, step                the file as given; the step shown
  reader                    name, release, api_version, library (the plug-in's path), options (title: true or false)
  steps                     per step: step, time, geometry_step, cycle, file; the last two come from the files that the
                            reader lists and are null for files that it did not look into
  time_sets                 number, description, of_geometry, of_variables, times
  changing_geometry         status (0 fixed, 1 coordinates, 2 connectivity), text
  motion                    compared_geometry_steps (empty if there is only one), moving_parts (part numbers)
  region_sets               region_set (from 0), part (the number of its whole mesh), nodes, elements (shape: count)
  groups                    name, parts (names)
  parts                     number, name, name_bytes_hex (if the file's bytes are not ASCII), kind (surface, volume or
                            whole), region_set (null if the reader does not tell), group, nodes, elements, axes (r,
                            theta, z, if bounds are of these), bounds (lowest and highest corner; null without nodes)
  variables                 number, name, label, type (scalar or vector), per (node or element), availability (given, not
                            in this step, not offered or failed), reason (if failed), ranges (per component: minimum,
                            maximum, mean, undefined, not_numbers; the first three null without numbers)
  all_steps                 of several steps, per step: step, bounds (one for each of parts; null if the step lacks it),
                            variables (number, name, availability, reason, ranges)
  warnings                  what the reader found doubtful about the geometry, in words
  problems                  what could not be read, in words; the exit status is then 3
Of a dataset that the reader refuses:
  file, reason              the file as given, why it is refused
  files                     per file that is shown: file, size (bytes), entries, complete, ended_at, problems
  entries                   per title: offset, region_set (from 0; null before the first), title, whole (up to its end)
  complete, ended_at        whether the file could be followed to its end, and the offset where that ended
  problems                  the first errors, in words
Shapes are tri, quad, tet, pyramid, prism and hex. Steps and region sets count from 0, parts and variables from 1.

)";

struct InfoOptions {
  DatasetOptions dataset;
  std::vector<std::string> steps = {"0"};
  std::vector<std::string> parts = {"all"};
  std::vector<std::string> variables;
  bool json = false;
  bool ranges = false;
  bool all_steps = false;

  SummaryDetail detail(std::size_t chosen_steps) const {
    if (all_steps || chosen_steps > 1) return SummaryDetail::all_steps;
    return ranges ? SummaryDetail::ranges : SummaryDetail::structure;
  }
};

// Opens the dataset and goes through it. Throws CommandError when it cannot.
DatasetSummary read_summary(const InfoOptions& options) {
  OpenDataset dataset(options.dataset);
  try {
    host::Session& session = dataset.session();
    SummaryChoice choice;
    choice.steps = choose_steps(session, options.all_steps ? std::vector<std::string>{} : options.steps);
    // With --all-steps, --step is the one whose parts are shown.
    session.select_step(options.all_steps ? choose_steps(session, options.steps).front()
                                          : choice.steps.front());
    choice.parts = choose_parts(session, options.parts);
    choice.variables = choose_variables(session, options.variables);
    return summarize(session, dataset.library().path().string(), options.detail(choice.steps.size()), choice);
  } catch (const host::Error& error) {
    throw read_error(error, dataset.session());
  }
}

void print(const std::string& text) {
  Output output("");
  output.write(text);
  output.finish();
}

// Prints what is still there of a dataset that the reader refused. The result is the error to end with, which
// tells the files that are broken.
CommandError print_remains(const InfoOptions& options, const CommandError& error) {
  const Remains remains = find_remains(options.dataset.file, error.file(), error.reason());
  if (!remains.files.empty()) print(options.json ? remains_json(remains) : remains_text(remains));
  return {error.status(), error.file(), reason_with_files(remains)};
}

void run_info(const InfoOptions& options) {
  DatasetSummary summary;
  try {
    summary = read_summary(options);
  } catch (const CommandError& error) {
    if (error.status() == ExitStatus::unreadable && !error.file().empty())
      throw print_remains(options, error);
    throw;
  }
  print(options.json ? summary_json(summary) : summary_text(summary));
  if (!summary.problems.empty()) {
    throw CommandError(ExitStatus::unreadable, summary.problems.front());
  }
}

}  // namespace

void add_info_command(CLI::App& app) {
  const auto options = std::make_shared<InfoOptions>();
  CLI::App* command = app.add_subcommand("info", "Print the contents of a dataset");
  add_dataset_options(*command, options->dataset);
  add_steps_option(*command, options->steps, "The step to show; several are shown with ranges");
  add_parts_option(*command, options->parts, "The parts to show");
  add_variables_option(*command, options->variables, "The variables to show (default: all)");
  command->add_flag("--ranges", options->ranges,
                    "Show boxes, ranges and what moves; reads the values for it");
  command->add_flag("--all-steps", options->all_steps,
                    "Show the ranges, and the boxes of moving parts, at every step");
  command->add_flag("--json", options->json, "Print JSON for programs");
  command->footer(std::string(kInfoManual) + kChoiceText + kExitStatusText);
  command->callback([options] { run_info(*options); });
}

}  // namespace tool
