#include "tool/series_command.h"

#include <cerrno>
#include <filesystem>
#include <memory>
#include <optional>
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
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/interrupt.h"
#include "tool/jobs.h"
#include "tool/named_values.h"
#include "tool/output.h"
#include "tool/point_text.h"
#include "tool/progress.h"
#include "tool/quantity.h"
#include "tool/read_error.h"
#include "tool/series_writer.h"
#include "tool/vtk_series.h"
#include "tool/vtkhdf_series.h"

namespace tool {

namespace {

// `forms` are the names that OUT may have.
std::filesystem::path output_path(const SeriesCommandOptions& options, const char* forms) {
  std::filesystem::path output = options.output;
  std::error_code ignored;
  // A number after a dot, or a folder that is there, is not a kind of file.
  const std::string extension = extension_of(options.output);
  if (extension == ".pvd") {
    if (std::filesystem::is_directory(output, ignored))
      throw CommandError(ExitStatus::failure, options.output,
                         "cannot write: " + std::generic_category().message(EISDIR));
    return output;
  }
  const bool is_number = extension.find_first_not_of(".0123456789") == std::string::npos;
  if (!extension.empty() && !is_number && !std::filesystem::is_directory(output, ignored)) {
    throw CommandError(
        ExitStatus::usage, options.output,
        fmt::format("cannot write '{}' files: OUT is {}, or a folder (NAME/)", extension, forms));
  }
  return output / std::filesystem::path(options.dataset.file).filename().replace_extension(".pvd");
}

bool is_vtkhdf(const SeriesCommandOptions& options) {
  return extension_of(options.output) == kVtkHdfExtension;
}

std::unique_ptr<SeriesWriter> make_series(host::Session& session, const std::filesystem::path& output,
                                          const SeriesCommandOptions& options, const SeriesOptions& choices,
                                          std::size_t steps) {
  if (is_vtkhdf(options)) return make_vtkhdf_series(session, output, choices, steps);
  return std::make_unique<VtkSeries>(session, output, choices);
}

int jobs_of(const SeriesCommandOptions& options, const host::Session& session,
            const std::vector<int>& steps) {
  if (!is_vtkhdf(options)) return usable_jobs(options.jobs, steps.size(), memory_of_step(session, steps));
  if (options.jobs > 1) throw CommandError(ExitStatus::usage, "--jobs: a .vtkhdf file is written by one job");
  return 1;
}

}  // namespace

std::filesystem::path collection_path(const SeriesCommandOptions& options) {
  return output_path(options, "NAME.pvd");
}

std::filesystem::path series_path(const SeriesCommandOptions& options) {
  return is_vtkhdf(options) ? std::filesystem::path(options.output)
                            : output_path(options, "NAME.pvd, NAME.vtkhdf");
}

void add_series_options(CLI::App& command, SeriesCommandOptions& options, SeriesJobs jobs) {
  add_dataset_options(command, options.dataset);
  command
      .add_option("OUT", options.output,
                  jobs == SeriesJobs::several
                      ? "The .pvd or .vtkhdf file to write, or the folder for a .pvd file"
                      : "The .pvd file to write, or the folder to write it into")
      ->required()
      ->check(file_name());
  add_steps_option(command, options.steps, "The steps to write (default: all)");
  add_parts_option(command, options.parts, "The parts to write");
  add_variables_option(command, options.variables, "The variables to write (default: all)");
  command
      .add_option("--precision", options.precision,
                  "single (as the reader gives it; the default) or double, of coordinates and values")
      ->transform(named_values<vtkdata::Precision>(
          {{"single", vtkdata::Precision::single_width}, {"double", vtkdata::Precision::double_width}}));
  command
      .add_option("--compress", options.compression,
                  "lz4 (fast; not for .vtkhdf) or zlib (smaller, many times slower); none without it")
      ->transform(named_values<vtkdata::Compression>(
          {{"lz4", vtkdata::Compression::lz4}, {"zlib", vtkdata::Compression::zlib}}));
  if (jobs == SeriesJobs::several) add_jobs_option(command, options.jobs);
}

void write_series(const SeriesCommandOptions& options) {
  const std::filesystem::path collection = series_path(options);
  std::optional<PointPair> box;
  if (!options.box.empty()) box = points_of_option("--box", options.box);
  vtkObject::GlobalWarningDisplayOff();  // errors are told in one line of our own
  with_dataset(options.dataset, [&](host::Session& session) {
    const std::vector<int> steps = choose_steps(session, options.steps);
    session.select_step(steps.front());
    const SeriesOptions choices{choose_parts(session, options.parts),
                                choose_whole_quantities(session, options.variables), box, options.precision,
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
    if (box && !series->has_parts()) {
      throw CommandError(ExitStatus::usage, options.dataset.file,
                         fmt::format("no element of the parts is in the box {}", options.box));
    }
    progress.erase();
    Output output("");
    output.write(collection.string() + "\n");
    output.finish();
  });
}

}  // namespace tool
