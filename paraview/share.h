// Cuts a part into shares, one per rank: each a stretch of the part's cells with the nodes that they use.
// Nodes between two shares are in both; there are no ghost cells.
#pragma once

#include <vector>
#include <vtkDataArray.h>
#include <vtkPoints.h>
#include <vtkSmartPointer.h>

#include "vtk/cells.h"

namespace paraview {

// The cells first to last - 1.
struct CellRange {
  vtkIdType first = 0;
  vtkIdType last = 0;
};

// What share number `share` (from 0) of `count` has of a part's cells: stretches as equal as can be, in the
// order of the shares.
CellRange range_of_share(vtkIdType cells, int share, int count);

// The cells of one share, with point numbers of the share, and the part's node (from 0) of each point.
struct CellShare {
  vtkdata::Cells cells;
  std::vector<int> nodes;
};

// Makes the shares of one part.
class ShareCutter {
 public:
  // `points`: how many points the cells are of.
  ShareCutter(const vtkdata::Cells& cells, vtkIdType points);

  // Throws host::Error when a share is too large for numbers of 32 bits.
  CellShare cut(CellRange range);

 private:
  template <typename Id>
  CellShare cut_from(const Id* corners, const Id* offsets, CellRange range);

  vtkdata::Cells whole_;
  // Per node of the part: its point in the share that is being cut, or none.
  std::vector<int> point_of_node_;
};

// The points of these nodes.
vtkSmartPointer<vtkPoints> take_points(vtkPoints* whole, const std::vector<int>& nodes);

// The tuples of these nodes, or of these cells, of an array of floats. They bear no name.
vtkSmartPointer<vtkDataArray> take_tuples(vtkDataArray* whole, const std::vector<int>& nodes);
vtkSmartPointer<vtkDataArray> take_tuples(vtkDataArray* whole, CellRange range);

}  // namespace paraview
