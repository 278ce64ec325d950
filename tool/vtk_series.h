// Writes a dataset as a VTK series: NAME.pvd, the collection of the steps; NAME/step_N.vtm, the composite
// dataset of a step; NAME/step_N/, the files of its parts.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/session.h"
#include "tool/derived_reader.h"
#include "tool/series_writer.h"
#include "tool/written_files.h"
#include "vtk/collection_text.h"

namespace tool {

// The values in the precision of the files.
vtkSmartPointer<vtkDataArray> at_precision(vtkFloatArray* values, vtkdata::Precision precision);

class VtkSeries : public SeriesWriter {
 public:
  // `collection` is the path of the .pvd file; its folder is made if it is missing. Throws CommandError when
  // it cannot be made.
  VtkSeries(host::Session& session, const std::filesystem::path& collection, SeriesOptions options);

  // Writes the files of the step into a temporary folder.
  Json write_step(const std::function<void()>& after_part) override;

  // Moves them to their places and writes the collection of all steps so far. Files of the step that an
  // earlier run wrote and this one does not are removed; all other files stay. With a box, steps without an
  // element in it wait for one that has some: an earlier series is not replaced by one of nothing.
  void add_step(const Json& step) override;

  bool has_parts() const override { return has_parts_; }

  // Removes the steps of earlier runs that this run did not write, if this run wrote any.
  void finish() override;

 private:
  // A folder for files while they are written, with a name that nothing else has. What is still in it at the
  // end is removed.
  class TemporaryFolder {
   public:
    TemporaryFolder(const std::filesystem::path& parent, const std::string& name);
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::filesystem::path& path() const { return path_; }

   private:
    std::filesystem::path path_;
  };

  bool is_empty_so_far() const;
  void place_step(const Json& step);
  std::string step_name() const;
  // Returns whether the part has anything in the box.
  bool write_part(int part, const std::filesystem::path& path);
  std::string file_name_of(int part) const;

  host::Session& session_;
  std::filesystem::path collection_;
  std::filesystem::path folder_;  // of the steps
  SeriesOptions options_;
  DerivedReader derived_;
  std::vector<std::string> part_names_;
  std::vector<std::string> variable_names_;
  std::vector<vtkdata::CollectionStep> steps_;
  bool has_parts_ = false;
  std::vector<Json> empty_steps_;  // not yet in their places
  WrittenFiles written_;
  std::set<std::string> files_;  // of this run, relative to the folder
  TemporaryFolder temporary_;    // with a folder per step
};

}  // namespace tool
