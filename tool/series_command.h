// What the commands that write a dataset as a VTK series have in common: convert, extract and mean.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tool/cli_names.h"
#include "tool/dataset_options.h"
#include "vtk/grid_file.h"
#include "vtk/precision.h"

namespace tool {

struct SeriesCommandOptions {
  DatasetOptions dataset;
  std::string output;
  std::vector<std::string> steps;
  std::vector<std::string> parts = {"surfaces", "volumes"};
  std::vector<std::string> variables;
  std::string box;  // X,Y,Z:X,Y,Z; empty: everything
  vtkdata::Precision precision = vtkdata::Precision::single_width;
  vtkdata::Compression compression = vtkdata::Compression::none;
  int jobs = 0;
};

// Whether a command works on several steps at once.
enum class SeriesJobs { one, several };

// Adds FILE, OUT and all options but --box to a command, --jobs if it works on several steps.
void add_series_options(CLI::App& command, SeriesCommandOptions& options,
                        SeriesJobs jobs = SeriesJobs::several);

// The .pvd file that OUT means. Throws CommandError (wrong usage) when it means none.
std::filesystem::path collection_path(const SeriesCommandOptions& options);

// The same, or a .vtkhdf file.
std::filesystem::path series_path(const SeriesCommandOptions& options);

// Writes the series and prints the name of its .pvd file.
void write_series(const SeriesCommandOptions& options);

}  // namespace tool
