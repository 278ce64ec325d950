#include "paraview/share.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkTypeInt32Array.h>
#include <vtkTypeInt64Array.h>

#include "host/error.h"

namespace paraview {
namespace {

constexpr int kNone = -1;

vtkSmartPointer<vtkFloatArray> make_like(vtkDataArray* whole, vtkIdType tuples) {
  auto array = vtkSmartPointer<vtkFloatArray>::New();
  array->SetNumberOfComponents(whole->GetNumberOfComponents());
  array->SetNumberOfTuples(tuples);
  return array;
}

void gather(vtkDataArray* whole, const std::vector<int>& nodes, float* to) {
  const float* from = vtkFloatArray::SafeDownCast(whole)->GetPointer(0);
  const auto width = static_cast<std::size_t>(whole->GetNumberOfComponents());
  for (const int node : nodes) to = std::copy_n(from + static_cast<std::size_t>(node) * width, width, to);
}

}  // namespace

CellRange range_of_share(vtkIdType cells, int share, int count) {
  const auto bound = [&](int i) { return cells / count * i + std::min<vtkIdType>(i, cells % count); };
  return {bound(share), bound(share + 1)};
}

ShareCutter::ShareCutter(const vtkdata::Cells& cells, vtkIdType points)
    : whole_(cells), point_of_node_(static_cast<std::size_t>(points), kNone) {}

CellShare ShareCutter::cut(CellRange range) {
  vtkCellArray* cells = whole_.connectivity;
  if (cells->IsStorage64Bit()) {
    return cut_from(cells->GetConnectivityArray64()->GetPointer(0), cells->GetOffsetsArray64()->GetPointer(0),
                    range);
  }
  return cut_from(cells->GetConnectivityArray32()->GetPointer(0), cells->GetOffsetsArray32()->GetPointer(0),
                  range);
}

template <typename Id>
CellShare ShareCutter::cut_from(const Id* corners, const Id* offsets, CellRange range) {
  const std::int64_t first_corner = offsets[range.first];
  const std::int64_t corner_count = offsets[range.last] - first_corner;
  if (corner_count > std::numeric_limits<vtkTypeInt32>::max()) {
    throw host::Error("a share of " + std::to_string(range.last - range.first) +
                      " cells is too large for one rank");
  }
  vtkNew<vtkTypeInt32Array> offsets_of_share;
  vtkNew<vtkTypeInt32Array> corners_of_share;
  offsets_of_share->SetNumberOfValues(range.last - range.first + 1);
  corners_of_share->SetNumberOfValues(corner_count);
  std::transform(offsets + range.first, offsets + range.last + 1, offsets_of_share->GetPointer(0),
                 [&](Id offset) { return static_cast<vtkTypeInt32>(offset - first_corner); });

  CellShare share;
  vtkTypeInt32* to = corners_of_share->GetPointer(0);
  for (std::int64_t i = 0; i < corner_count; ++i) {
    const Id node = corners[first_corner + i];
    int& point = point_of_node_[static_cast<std::size_t>(node)];
    if (point == kNone) {
      point = static_cast<int>(share.nodes.size());
      share.nodes.push_back(static_cast<int>(node));
    }
    to[i] = point;
  }
  for (const int node : share.nodes) point_of_node_[static_cast<std::size_t>(node)] = kNone;

  share.cells.connectivity = vtkSmartPointer<vtkCellArray>::New();
  share.cells.connectivity->SetData(offsets_of_share, corners_of_share);
  share.cells.types = vtkSmartPointer<vtkUnsignedCharArray>::New();
  share.cells.types->SetNumberOfValues(range.last - range.first);
  std::copy_n(whole_.types->GetPointer(range.first), range.last - range.first,
              share.cells.types->GetPointer(0));
  return share;
}

vtkSmartPointer<vtkPoints> take_points(vtkPoints* whole, const std::vector<int>& nodes) {
  auto points = vtkSmartPointer<vtkPoints>::New();
  points->SetDataType(VTK_FLOAT);
  points->SetNumberOfPoints(static_cast<vtkIdType>(nodes.size()));
  gather(whole->GetData(), nodes, vtkFloatArray::SafeDownCast(points->GetData())->GetPointer(0));
  return points;
}

vtkSmartPointer<vtkDataArray> take_tuples(vtkDataArray* whole, const std::vector<int>& nodes) {
  vtkSmartPointer<vtkFloatArray> array = make_like(whole, static_cast<vtkIdType>(nodes.size()));
  gather(whole, nodes, array->GetPointer(0));
  return array;
}

vtkSmartPointer<vtkDataArray> take_tuples(vtkDataArray* whole, CellRange range) {
  vtkSmartPointer<vtkFloatArray> array = make_like(whole, range.last - range.first);
  const vtkIdType width = whole->GetNumberOfComponents();
  std::copy_n(vtkFloatArray::SafeDownCast(whole)->GetPointer(range.first * width),
              (range.last - range.first) * width, array->GetPointer(0));
  return array;
}

}  // namespace paraview
