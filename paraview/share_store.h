// What one rank holds of a dataset: its shares of the chosen parts, kept from step to step as the same VTK
// objects as long as they do not change.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>
#include <vtkDataArray.h>
#include <vtkPartitionedDataSetCollection.h>
#include <vtkPoints.h>
#include <vtkSmartPointer.h>

#include "host/part_tree.h"
#include "paraview/dataset_info.h"
#include "vtk/cells.h"

namespace paraview {

// What a step shows.
struct StepPlan {
  std::vector<PartInfo> parts;            // ascending numbers
  std::vector<host::PartFolder> folders;  // where these parts are in the hierarchy
  std::vector<int> variables;
  bool is_other_step = false;  // values of the step before are of no use
};

std::string to_bytes(const StepPlan& plan);
StepPlan step_plan_from(std::string_view bytes);

class ShareStore {
 public:
  // Lets go of the parts and values that the plan does not have.
  void follow(StepPlan plan);
  void clear();

  void set_cells(int part, vtkdata::Cells cells);
  void set_points(int part, const vtkSmartPointer<vtkPoints>& points);
  // A tuple per point or cell of the share.
  void set_values(int part, int variable, const vtkSmartPointer<vtkDataArray>& values);
  void discard(int part);

  // The parts of the plan as a collection with one partition each, and their hierarchy.
  vtkSmartPointer<vtkPartitionedDataSetCollection> collection(const DatasetInfo& info) const;

 private:
  struct Mesh {
    vtkdata::Cells cells;
    vtkSmartPointer<vtkPoints> points;
  };

  StepPlan plan_;
  std::map<int, Mesh> meshes_;
  std::map<std::pair<int, int>, vtkSmartPointer<vtkDataArray>> values_;  // by part and variable
};

}  // namespace paraview
