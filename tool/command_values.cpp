// fldtool values
#include <algorithm>
#include <charconv>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "host/text_encoding.h"
#include "tool/choice.h"
#include "tool/commands.h"
#include "tool/coordinate_names.h"
#include "tool/dataset_options.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/named_values.h"
#include "tool/number_range.h"
#include "tool/output.h"
#include "tool/progress.h"
#include "tool/value_table.h"
#include "tool/value_writer.h"
#include "tool/vector_components.h"

namespace tool {
namespace {

constexpr char kValuesManual[] =
    R"(Prints or writes the values of variables on parts, a row per node, or per element for variables that are given per
element. 'fldtool info' shows the numbers and names of parts and variables. U.x, U.y, U.z and U.magnitude are one component
and the magnitude of the vector U; --component chooses it for all vectors.

csv  A header line, then per row: the number (from 1), x, y, z, and the values: one column with the name of the scalar, or
     three with _x, _y and _z after the vector's name. An undefined value is left empty.
npy  A NumPy file: a two-dimensional float32 array without the row numbers; the columns are x, y, z and the values. An
     undefined value is NaN.

With several steps, a column step comes first; with several parts, the columns part (the number) and name, of which a NumPy
file has the number. The values of a variable that a step lacks are undefined then.

On the whole mesh of a mesh in cylindrical coordinates the coordinates are r, theta and z, and the columns have these names
if it is the first part; all other parts have x, y and z. An element's x, y and z are the means of its nodes'. Elements are numbered through the shapes of the part in the order
tri, quad, tet, pyramid, prism, hex. Without --output, CSV goes to the standard output stream. A file appears under its
name when it is complete.

--rows 11-20 takes these rows of each part alone, of which CSV keeps the numbers; 11 takes one, 11- all from there, last the
last.

)";

enum class ValueFormat { csv, npy };

struct ValuesOptions {
  DatasetOptions dataset;
  std::vector<std::string> steps = {"0"};
  std::vector<std::string> parts;
  std::vector<std::string> variables;
  std::optional<int> component;
  std::string rows;
  std::string output;
  std::optional<ValueFormat> format;
};

// The form to write: the one asked for, else what the output's name says.
ValueFormat format_of(const ValuesOptions& options) {
  if (options.format == ValueFormat::npy && options.output.empty())
    throw CommandError(ExitStatus::usage, "--format npy needs --output (- for the standard output stream)");
  if (options.format) return *options.format;
  check_extension(options.output, {".csv", ".npy"});
  return extension_of(options.output) == ".npy" ? ValueFormat::npy : ValueFormat::csv;
}

// Applies --component to the vectors, and refuses variables that cannot share a table.
std::vector<ChosenComponent> chosen_columns(host::Session& session, const ValuesOptions& options) {
  std::vector<ChosenComponent> chosen = choose_components(session, options.variables);
  const std::string& file = options.dataset.file;
  const host::Variable& first = session.variable(chosen.front().variable);
  bool has_vector = false;
  for (ChosenComponent& one : chosen) {
    const host::Variable& variable = session.variable(one.variable);
    const bool is_vector = variable.kind == host::VariableKind::vector;
    if (is_vector && !one.component) one.component = options.component;
    has_vector = has_vector || is_vector;
    if (variable.location != first.location) {
      throw CommandError(
          ExitStatus::usage, file,
          fmt::format("variables {} and {} do not fit into one table: one has values per node, "
                      "the other per element",
                      host::to_utf8(first.name), host::to_utf8(variable.name)));
    }
  }
  if (options.component.value_or(0) > 0 && !has_vector) {
    const auto component = static_cast<std::size_t>(*options.component);
    throw CommandError(
        ExitStatus::usage, file,
        fmt::format("variable {} has no component {}", host::to_utf8(first.name), kComponents[component]));
  }
  return chosen;
}

class ValuesRun {
 public:
  ValuesRun(const ValuesOptions& options, ValueFormat format, host::Session& session)
      : options_(options),
        session_(session),
        format_(format),
        steps_(choose_steps(session, options.steps)),
        parts_(choose_parts(at_first_step(), options.parts)),
        columns_(chosen_columns(session, options)),
        origin_{.step = steps_.size() > 1, .part = parts_.size() > 1} {}

  void run() {
    const std::size_t rows = count_rows();
    Output output(options_.output);
    // Rows on a terminal show by themselves how far it is.
    Progress progress("rows", rows, ProgressUnit::steps, output.is_terminal() ? -1 : STDERR_FILENO);
    progress.update(0);
    const std::unique_ptr<ValueWriter> writer = format_ == ValueFormat::npy
                                                    ? make_npy_writer(origin_, rows, output, progress)
                                                    : make_csv_writer(origin_, output, progress);
    for (const int step : steps_) {
      session_.select_step(step);
      parts_.tell_missing(session_, progress);
      for (const int part : parts_.at(session_)) {
        const ValueTable table =
            make_value_table(session_, columns_, part, names_.of(session_, session_.part(part)));
        check_missing(table, part);
        writer->add(table, rows_of(part), {step, part, host::to_utf8(session_.part(part).name)});
      }
    }
    output.finish();
  }

 private:
  host::Session& at_first_step() {
    session_.select_step(steps_.front());
    return session_;
  }

  std::size_t count_rows() {
    std::size_t rows = 0;
    for (const int step : steps_) {
      session_.select_step(step);
      for (const int part : parts_.at(session_)) rows += rows_of(part).size();
    }
    return rows;
  }

  // The rows of a part of the session's step.
  RowRange rows_of(int part) {
    const std::size_t count = row_count(session_.variable(columns_.front().variable), session_.part(part));
    if (options_.rows.empty()) return {0, count};
    const auto range = parse_range(options_.rows, 1, static_cast<int>(count));
    if (range && range->stride == 1)
      return {static_cast<std::size_t>(range->from) - 1, static_cast<std::size_t>(range->to)};
    throw CommandError(
        ExitStatus::usage, options_.dataset.file,
        fmt::format("there are no rows '{}': {}", options_.rows,
                    count == 0 ? "the part has none" : fmt::format("the rows are 1 to {}", count)));
  }

  // A single table needs all its values.
  void check_missing(const ValueTable& table, int part) {
    if (table.missing.empty() || origin_.step || origin_.part) return;
    throw CommandError(ExitStatus::usage, options_.dataset.file,
                       fmt::format("variable {} is not there for part {} at step {}", table.missing.front(),
                                   part, session_.step()));
  }

  const ValuesOptions& options_;
  host::Session& session_;
  ValueFormat format_;
  std::vector<int> steps_;
  ChosenParts parts_;
  std::vector<ChosenComponent> columns_;
  OriginColumns origin_;
  CoordinateNames names_;
};

void run_values(const ValuesOptions& options) {
  const ValueFormat format = format_of(options);
  with_dataset(options.dataset, [&](host::Session& session) { ValuesRun(options, format, session).run(); });
}

}  // namespace

void add_values_command(CLI::App& app) {
  const auto options = std::make_shared<ValuesOptions>();
  CLI::App* command = app.add_subcommand("values", "Print or write the values of variables on parts");
  add_dataset_options(*command, options->dataset);
  add_steps_option(*command, options->steps, "The steps");
  add_parts_option(*command, options->parts, "The parts")->required();
  add_variables_option(*command, options->variables, "The variables: NAME, NAME.x, NAME.magnitude")
      ->required();
  command
      ->add_option("-c,--component", options->component,
                   "Of vectors: x, y, z (or 0, 1, 2) or magnitude (default: x, y and z)")
      ->transform(named_values<int>(
          {{"x", 0}, {"y", 1}, {"z", 2}, {"0", 0}, {"1", 1}, {"2", 2}, {"magnitude", kMagnitude}}));
  command->add_option("--rows", options->rows, "FROM-TO: these rows alone, from 1 (default: all)");
  command
      ->add_option("-o,--output", options->output,
                   "The .csv or .npy file to write; - is the standard output stream")
      ->check(file_name());
  command
      ->add_option("--format", options->format,
                   "csv or npy, whatever the name of the output (default: by the name)")
      ->transform(named_values<ValueFormat>({{"csv", ValueFormat::csv}, {"npy", ValueFormat::npy}}));
  command->footer(std::string(kValuesManual) + kChoiceText + kExitStatusText);
  command->callback([options] { run_values(*options); });
}

}  // namespace tool
