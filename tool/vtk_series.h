// Writes a dataset as a VTK series: NAME.pvd, the collection of the steps; NAME/step_N.vtm, the composite
// dataset of a step; NAME/step_N/, the files of its parts.
#pragma once

#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "host/session.h"
#include "tool/chosen_parts.h"
#include "tool/written_files.h"
#include "vtk/collection_text.h"
#include "vtk/grid_file.h"
#include "vtk/precision.h"

namespace tool {

struct SeriesOptions {
  ChosenParts parts;
  std::vector<int> variables;  // numbers
  vtkdata::Precision precision = vtkdata::Precision::single_width;
  vtkdata::Compression compression = vtkdata::Compression::none;
};

class VtkSeries {
 public:
  // `collection` is the path of the .pvd file; its folder is made if it is missing. Throws CommandError when
  // it cannot be made.
  VtkSeries(host::Session& session, const std::filesystem::path& collection, SeriesOptions options);

  // Writes the session's step, part by part, and then the collection of all steps written so far. Files of
  // the step that an earlier run wrote and this one does not are removed; all other files stay.
  // `after_part` is called after every part; when an exception leaves it, nothing of the step stays behind.
  // Throws CommandError when a file cannot be written and host::Error when the dataset cannot be read.
  void write_step(const std::function<void()>& after_part);

  // Removes the steps of earlier runs that this run did not write.
  void finish();

 private:
  std::string step_name() const;
  // Moves the files of a step from their temporary folder to their places.
  void publish(const std::string& name, const std::vector<int>& parts, const std::filesystem::path& from);
  void write_part(int part, const std::filesystem::path& path) const;
  std::string file_name_of(int part) const;

  host::Session& session_;
  std::filesystem::path collection_;
  std::filesystem::path folder_;  // of the steps
  SeriesOptions options_;
  std::vector<std::string> part_names_;
  std::vector<std::string> variable_names_;
  std::vector<vtkdata::CollectionStep> steps_;
  WrittenFiles written_;
  std::set<std::string> files_;  // of this run, relative to the folder
};

}  // namespace tool
