// fldtool convert
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>
#include <vtkObject.h>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "host/error.h"
#include "host/text_encoding.h"
#include "nlohmann/json.hpp"
#include "tool/choice.h"
#include "tool/commands.h"
#include "tool/dataset_options.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/interrupt.h"
#include "tool/jobs.h"
#include "tool/named_values.h"
#include "tool/output.h"
#include "tool/progress.h"
#include "tool/read_error.h"
#include "tool/vtk_series.h"
#include "tool/vtkhdf_series.h"

namespace tool {
namespace {

constexpr char kConvertManual[] =
    R"(Writes the dataset that FILE belongs to as VTK files, which ParaView and other programs open. OUT is the file NAME.pvd
to open, or a folder, in which it is named like FILE. The data files go next to it:

  NAME.pvd                      the series: a time and a composite dataset for each step
  NAME/step_N.vtm               the step's parts under Surfaces, Volumes and Whole mesh, the groups of surfaces as folders
  NAME/step_N/part_P_NAME.vtu   a part: its nodes and elements with the values of the variables

When OUT is NAME.vtkhdf, all steps go into this one file, in the format VTKHDF: a collection of grids over time, one for
each part, under the same hierarchy. A mesh that does not change from one step to the next is in it once. VTK 9.4, ParaView
5.13 and later versions open such files.

Values per node become point data, those per element cell data; an undefined value is NaN. The elements are in the order
tri, quad, tet, pyramid, prism, hex; prisms have their corners as in VTK up to 9.6. Names are in UTF-8; when several parts
have the same name, their numbers follow it. In a .vtu file each part also has its time (TimeValue) and the labels of the
variables (Labels) as field data; the data is binary, appended without encoding, with 64-bit offsets.

The default parts are surfaces and volumes; the whole mesh has the elements of the volumes again. The parts are written one
after the other, so memory follows the largest of them, once per job of --jobs; a .vtkhdf file is written by one job, which
keeps the last mesh of every part. Files with these names are replaced step by step. Files of an earlier run that this run
does not write are removed, by the list that convert keeps in NAME/.fldtool-files; all other files stay. When the work is
interrupted, or a later step cannot be read, NAME.pvd or NAME.vtkhdf has all steps that were completed before.

)";

struct ConvertOptions {
  DatasetOptions dataset;
  std::string output;
  std::vector<std::string> steps;
  std::vector<std::string> parts = {"surfaces", "volumes"};
  std::vector<std::string> variables;
  vtkdata::Precision precision = vtkdata::Precision::single_width;
  vtkdata::Compression compression = vtkdata::Compression::none;
  int jobs = 0;
};

std::filesystem::path collection_path(const ConvertOptions& options) {
  std::filesystem::path output = options.output;
  const std::string extension = extension_of(options.output);
  if (extension == ".pvd" || extension == kVtkHdfExtension) return output;
  // A number after a dot, or a folder that is there, is not a kind of file.
  const bool is_number = extension.find_first_not_of(".0123456789") == std::string::npos;
  std::error_code ignored;
  if (!extension.empty() && !is_number && !std::filesystem::is_directory(output, ignored)) {
    throw CommandError(
        ExitStatus::usage, options.output,
        fmt::format("cannot write '{}' files: OUT is NAME.pvd, NAME.vtkhdf, or a folder (NAME/)", extension));
  }
  return output / std::filesystem::path(options.dataset.file).filename().replace_extension(".pvd");
}

bool is_vtkhdf(const ConvertOptions& options) {
  return extension_of(options.output) == kVtkHdfExtension;
}

std::unique_ptr<SeriesWriter> make_series(host::Session& session, const std::filesystem::path& output,
                                          const ConvertOptions& options, const SeriesOptions& choices,
                                          std::size_t steps) {
  if (is_vtkhdf(options)) return make_vtkhdf_series(session, output, choices, steps);
  return std::make_unique<VtkSeries>(session, output, choices);
}

int jobs_of(const ConvertOptions& options, const host::Session& session, const std::vector<int>& steps) {
  if (!is_vtkhdf(options)) return usable_jobs(options.jobs, steps.size(), memory_of_step(session, steps));
  if (options.jobs > 1) throw CommandError(ExitStatus::usage, "--jobs: a .vtkhdf file is written by one job");
  return 1;
}

void run_convert(const ConvertOptions& options) {
  const std::filesystem::path collection = collection_path(options);
  vtkObject::GlobalWarningDisplayOff();  // errors are told in one line of our own
  OpenDataset dataset(options.dataset);
  host::Session& session = dataset.session();
  try {
    const std::vector<int> steps = choose_steps(session, options.steps);
    session.select_step(steps.front());
    const SeriesOptions choices{choose_parts(session, options.parts),
                                choose_variables(session, options.variables), options.precision,
                                options.compression};
    const int jobs = jobs_of(options, session, steps);
    const std::unique_ptr<SeriesWriter> series =
        make_series(session, collection, options, choices, steps.size());
    Progress progress("parts", steps.size() * choices.parts.size(), ProgressUnit::steps);
    const std::size_t parts = choices.parts.size();
    const auto write_step = [&](std::size_t i) {
      std::size_t done = i * parts;
      try {
        session.select_step(steps[i]);
        choices.parts.tell_missing(session, progress);
        return series->write_step([&] {
          progress.update(++done);
          stop_if_interrupted();
        });
      } catch (const host::Error& error) {
        throw read_error(error, session);
      }
    };
    progress.update(0);
    run_jobs(jobs, steps.size(), write_step, [&](std::size_t i, const Json& step) {
      series->add_step(step);
      progress.update((i + 1) * parts);
      return true;
    });
    series->finish();
    progress.erase();
    Output output("");
    output.write(collection.string() + "\n");
    output.finish();
  } catch (const host::Error& error) {
    throw read_error(error, dataset.session());
  }
}

}  // namespace

void add_convert_command(CLI::App& app) {
  const auto options = std::make_shared<ConvertOptions>();
  CLI::App* command = app.add_subcommand("convert", "Write a dataset as VTK files");
  add_dataset_options(*command, options->dataset);
  command
      ->add_option("OUT", options->output, "The .pvd or .vtkhdf file to write, or the folder for a .pvd file")
      ->required()
      ->check(file_name());
  add_steps_option(*command, options->steps, "The steps to write (default: all)");
  add_parts_option(*command, options->parts, "The parts to write");
  add_variables_option(*command, options->variables, "The variables to write (default: all)");
  command
      ->add_option("--precision", options->precision,
                   "single (as the reader gives it; the default) or double, of coordinates and values")
      ->transform(named_values<vtkdata::Precision>(
          {{"single", vtkdata::Precision::single_width}, {"double", vtkdata::Precision::double_width}}));
  command
      ->add_option("--compress", options->compression,
                   "lz4 (fast; not for .vtkhdf) or zlib (smaller, many times slower); none without it")
      ->transform(named_values<vtkdata::Compression>(
          {{"lz4", vtkdata::Compression::lz4}, {"zlib", vtkdata::Compression::zlib}}));
  add_jobs_option(*command, options->jobs);
  command->footer(std::string(kConvertManual) + kChoiceText + kExitStatusText);
  command->callback([options] { run_convert(*options); });
}

}  // namespace tool
