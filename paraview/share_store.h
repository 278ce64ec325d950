// What one rank holds of a dataset: its shares of the chosen parts as VTK objects, which stay the same from
// step to step while their contents do.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>
#include <vtkDataArray.h>
#include <vtkIdTypeArray.h>
#include <vtkPartitionedDataSetCollection.h>
#include <vtkPoints.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>

#include "parallel/step_reader.h"
#include "paraview/dataset_info.h"
#include "paraview/ghost_marks.h"
#include "paraview/step_plan.h"
#include "vtk/cells.h"

namespace paraview {

class ShareStore : public parallel::ShareSink {
 public:
  // Shares that other processes have the rest of get the global numbers of their nodes.
  void set_shared(bool is_shared) { is_shared_ = is_shared; }
  void clear();

  void set_mesh(int part, parallel::ShareCells cells, const parallel::NodeSet& nodes) override;
  void set_points(int part, parallel::Array<float> points) override;
  void set_values(int part, int variable, int components, parallel::Array<float> values) override;
  void drop_values(int part, int variable) override;
  void drop_part(int part) override;

  // Gives every part of the plan the plan's variables: NaN where the step has no values.
  void fill_missing(const StepPlan& plan, const DatasetInfo& info);
  // Marks what filters have to leave out: what other ranks have, and in overset meshes what is blanked, which
  // is where the step gives none of the plan's variables a value. Their own marks are not among these.
  void mark_ghosts(const StepPlan& plan, const DatasetInfo& info);

  // The plan's parts as a collection with one partition each, and their hierarchy.
  vtkSmartPointer<vtkPartitionedDataSetCollection> collection(const StepPlan& plan, const DatasetInfo& info);

 private:
  struct Part {
    vtkdata::Cells cells;
    vtkSmartPointer<vtkIdTypeArray> node_ids;
    std::int64_t ghosts = 0;
    parallel::Array<std::uint8_t> ghost_nodes;
    GhostMarks marks;
    vtkSmartPointer<vtkPoints> points;
    vtkSmartPointer<vtkUnstructuredGrid> mesh;            // points and cells, made when they are first shown
    std::map<int, vtkSmartPointer<vtkDataArray>> values;  // by variable
  };

  vtkSmartPointer<vtkDataObject> grid_of(int part, const DatasetInfo& info);
  static std::vector<std::uint8_t> blanked_nodes(const Part& part, int set, const StepPlan& plan,
                                                 const DatasetInfo& info);

  std::map<int, Part> parts_;  // by number
  bool is_shared_ = false;
};

}  // namespace paraview
