// The shares of one rank. Between steps, VTK objects are kept as long as they do not change.
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

// The parts and variables of a step.
struct StepPlan {
  std::vector<PartInfo> parts;            // ascending numbers
  std::vector<host::PartFolder> folders;  // their hierarchy
  std::vector<int> variables;
  bool is_other_step = false;  // whether values of the previous step are invalid
};

void put(vtkMultiProcessStream& stream, const StepPlan& plan);
StepPlan take_step_plan(vtkMultiProcessStream& stream);

class ShareStore {
 public:
  // Adopts the plan and releases parts and values that are not in it.
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
