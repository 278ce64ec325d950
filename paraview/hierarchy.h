// The hierarchy of a step's parts as ParaView shows it.
#pragma once

#include <vtkDataAssembly.h>
#include <vtkSmartPointer.h>

#include "paraview/step_plan.h"

namespace paraview {

// A node per folder and part; the plan's parts are the data sets 0, 1, ... in their order. Names that a node
// cannot have are in its attribute "label".
vtkSmartPointer<vtkDataAssembly> make_hierarchy(const StepPlan& plan);

}  // namespace paraview
