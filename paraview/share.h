// Splits a part into shares, one per rank: each a range of the part's cells with the nodes that they use.
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

// The cells of share number `share` (from 0) of `count`: ranges of equal size (give or take one), in order.
CellRange range_of_share(vtkIdType cells, int share, int count);

// The cells of one share, in point numbers of the share, and for each point its node of the part (from 0).
struct CellShare {
  vtkdata::Cells cells;
  std::vector<int> nodes;
};

// Cuts the shares of one part.
class ShareCutter {
 public:
  // `points`: the number of nodes of the part.
  ShareCutter(const vtkdata::Cells& cells, vtkIdType points);

  // Throws host::Error if a share is too large for 32-bit connectivity.
  CellShare cut(CellRange range);

 private:
  template <typename Id>
  CellShare cut_from(const Id* corners, const Id* offsets, CellRange range);

  vtkdata::Cells whole_;
  // Per node of the part: its point in the current share, or none.
  std::vector<int> point_of_node_;
};

// The points of these nodes.
vtkSmartPointer<vtkPoints> take_points(vtkPoints* whole, const std::vector<int>& nodes);

// The tuples of these nodes, or of these cells, of an array of floats, in an array without a name.
vtkSmartPointer<vtkDataArray> take_tuples(vtkDataArray* whole, const std::vector<int>& nodes);
vtkSmartPointer<vtkDataArray> take_tuples(vtkDataArray* whole, CellRange range);

}  // namespace paraview
