// The hierarchy of parts as ParaView shows it.
#pragma once

#include <vector>
#include <vtkDataAssembly.h>
#include <vtkSmartPointer.h>

#include "paraview/dataset_info.h"

namespace paraview {

// A node per folder and part; the parts are the data sets 0, 1, ... in their order. Names that a node cannot
// have are in its attribute "label".
vtkSmartPointer<vtkDataAssembly> make_hierarchy(const std::vector<PartInfo>& parts,
                                                const std::vector<host::PartFolder>& folders);

}  // namespace paraview
