// The reader that ParaView uses, in this process alone, with what it reports.
#pragma once

#include <filesystem>
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

  // Whether the dataset opens.
  bool open();
  std::vector<double> times();
  std::vector<std::string> part_names();
  void show_only(const std::string& part);

  // Brings the output to a time, or to a piece of it. Whether it went well.
  bool update(double time = 0.0);
  bool update_piece(int piece, int pieces);

  vtkPartitionedDataSetCollection* output();
  // The part of that name; null when the output does not have it.
  vtkUnstructuredGrid* grid(const std::string& part);
  std::vector<std::string> shown_parts();

  // The messages since they were last taken, an error each or a warning.
  std::vector<std::string> take_errors() { return std::exchange(errors_, {}); }
  std::vector<std::string> take_warnings() { return std::exchange(warnings_, {}); }

 private:
  vtkSmartPointer<vtkFLDReader> reader_;
  std::vector<std::string> errors_;
  std::vector<std::string> warnings_;
};

}  // namespace paraview_test
