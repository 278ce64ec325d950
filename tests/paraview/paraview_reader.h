// ParaView's reader in a single process, with the messages that it reports.
#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <utility>
#include <vector>
#include <vtkPartitionedDataSetCollection.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>

#include "vtkFLDReader.h"

namespace paraview_test {

class Reader {
 public:
  explicit Reader(const std::filesystem::path& file);

  vtkFLDReader* operator->() { return reader_; }

  // Whether the dataset opens. Surfaces and volumes are switched on then, and whole meshes off.
  bool open();
  // The same with the parts that are on at first.
  bool open_as_it_is();
  std::vector<double> times();
  std::vector<std::string> part_names();
  void show_only(const std::string& part);

  // Updates the output to a time, or to a piece of it. Returns whether it succeeded.
  bool update(double time = 0.0);
  bool update_piece(int piece, int pieces, int ghost_layers = 0);

  vtkPartitionedDataSetCollection* output();
  // The part of that name; null if the output does not have it.
  vtkUnstructuredGrid* grid(const std::string& part);
  std::vector<std::string> shown_parts();

  // The errors, those of the pipeline too, or warnings since the last call.
  std::vector<std::string> take_errors() { return std::exchange(errors_, {}); }
  std::vector<std::string> take_warnings() { return std::exchange(warnings_, {}); }

 private:
  bool has_updated();

  vtkSmartPointer<vtkFLDReader> reader_;
  std::set<std::string> known_parts_;
  std::vector<std::string> errors_;
  std::vector<std::string> warnings_;
};

}  // namespace paraview_test
