// fldtool values
#include <memory>
#include <optional>
#include <string>
#include <unistd.h>

#include "fmt/format.h"
#include "host/error.h"
#include "host/text_encoding.h"
#include "tool/commands.h"
#include "tool/dataset_options.h"
#include "tool/exit_status.h"
#include "tool/name_lookup.h"
#include "tool/output.h"
#include "tool/progress.h"
#include "tool/row_range.h"
#include "tool/value_table.h"

namespace tool {
namespace {

constexpr char kManual[] =
    R"(Prints or writes the values of one variable on one part at one step, a row per node, or per element for a variable that
is given per element. PART and VARIABLE are numbers or names, as 'fldtool info' shows them.

csv  A header line, then per row: the number (from 1), x, y, z, and the values: one column named like the variable, or
     three with _x, _y and _z behind the name. An undefined value is left empty.
npy  A NumPy file: a two-dimensional float32 array without the numbers, so the columns are x, y, z and the values. An
     undefined value is NaN.

An element's x, y and z are the means of its nodes'. Elements are numbered through the shapes of the part in the order
tri, quad, tet, pyramid, prism, hex. Without --output the csv form goes to the standard output stream. A file gets its name
when it is complete.

--rows 11-20 takes these rows alone, of which the csv form keeps the numbers; --rows 11 takes one.

)";

struct ValuesOptions {
  DatasetOptions dataset;
  std::string part;
  std::string variable;
  std::optional<int> component;
  std::string rows;
  std::string output;
  std::string format;
};

// The form to write: the one asked for, else what the output's name says.
bool writes_npy(const ValuesOptions& options) {
  const bool is_npy = options.format.empty() ? options.output.ends_with(".npy") : options.format == "npy";
  if (is_npy && options.output.empty()) {
    throw CommandError(ExitStatus::usage, "--format npy needs --output (- for the standard output stream)");
  }
  return is_npy;
}

void check_component(const ValuesOptions& options, const host::Variable& variable) {
  if (!options.component || *options.component < variable.components()) return;
  throw CommandError(
      ExitStatus::usage, options.dataset.file,
      fmt::format("variable {} has no component {}", host::to_utf8(variable.name), *options.component));
}

RowRange chosen_rows(const ValuesOptions& options, std::size_t count) {
  if (options.rows.empty()) return {0, count};
  if (const auto rows = parse_rows(options.rows, count)) return *rows;
  throw CommandError(
      ExitStatus::usage, options.dataset.file,
      fmt::format("there are no rows '{}': {}", options.rows,
                  count == 0 ? "the part has none" : fmt::format("the rows are 1 to {}", count)));
}

std::size_t row_count(const host::Variable& variable, const host::Part& part) {
  return static_cast<std::size_t>(variable.location == host::Location::element ? part.element_count()
                                                                               : part.nodes);
}

void run_values(const ValuesOptions& options) {
  const bool is_npy = writes_npy(options);
  OpenDataset dataset(options.dataset);
  try {
    host::Session& session = dataset.session();
    const int part = find_part(session, options.part);
    const int variable = find_variable(session, options.variable);
    check_component(options, session.variable(variable));
    const RowRange rows = chosen_rows(options, row_count(session.variable(variable), session.part(part)));
    Output output(options.output);
    // Rows on a terminal tell by themselves how far it is.
    Progress progress("rows", rows.size(), ProgressUnit::steps, output.is_terminal() ? -1 : STDERR_FILENO);
    progress.update(0);
    const ValueTable table = make_value_table(session, variable, part, options.component);
    is_npy ? write_npy(table, rows, output, progress) : write_csv(table, rows, output, progress);
    output.finish();
  } catch (const host::Error& error) {
    throw CommandError(ExitStatus::unreadable, options.dataset.file, host::message_to_utf8(error.reason()));
  }
}

}  // namespace

void add_values_command(CLI::App& app) {
  const auto options = std::make_shared<ValuesOptions>();
  CLI::App* command = app.add_subcommand("values", "Print or write the values of a variable on a part");
  add_dataset_options(*command, options->dataset);
  command->add_option("-p,--part", options->part, "The part's number or name")->required();
  command->add_option("--variable", options->variable, "The variable's number or name")->required();
  command
      ->add_option("-c,--component", options->component,
                   "Of a vector: 0, 1 or 2 for x, y or z (all without it)")
      ->check(CLI::Range(0, 2).description(""));
  command->add_option("--rows", options->rows, "FROM-TO: these rows alone, from 1 (all without it)");
  command->add_option("-o,--output", options->output, "The file to write; - is the standard output stream");
  command
      ->add_option("--format", options->format,
                   "csv or npy (otherwise by the output's name, csv without one)")
      ->check(CLI::IsMember({"csv", "npy"}));
  command->footer(std::string(kManual) + kExitStatusText);
  command->callback([options] { run_values(*options); });
}

}  // namespace tool
