#include "paraview/share_cells.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>
#include <vtkAOSDataArrayTemplate.h>
#include <vtkCellType.h>
#include <vtkNew.h>
#include <vtkTypeInt32Array.h>
#include <vtkTypeInt64Array.h>

#include "format/element_codes.h"

namespace paraview {
namespace {

struct Shape {
  unsigned char type = VTK_EMPTY_CELL;
  std::uint8_t corners = 0;
};

// By the file's type code.
constexpr std::array<Shape, 256> kShapes = [] {
  std::array<Shape, 256> shapes{};
  shapes[fld::kTriangle] = shapes[fld::kTriangleFace] = {VTK_TRIANGLE, 3};
  shapes[fld::kQuadrilateral] = shapes[fld::kQuadrilateralFace] = {VTK_QUAD, 4};
  shapes[fld::kTetrahedron] = {VTK_TETRA, 4};
  shapes[fld::kPyramid] = {VTK_PYRAMID, 5};
  shapes[fld::kPrism] = {VTK_WEDGE, 6};
  shapes[fld::kHexahedron] = {VTK_HEXAHEDRON, 8};
  return shapes;
}();

// The first node's triangle turns the other way round in VTK.
void turn_prism(std::int32_t* corners) {
  std::swap(corners[1], corners[2]);
  std::swap(corners[4], corners[5]);
}

template <typename IdArray, typename Number>
vtkSmartPointer<IdArray> adopt(parallel::Array<Number> numbers) {
  auto array = vtkSmartPointer<IdArray>::New();
  const auto size = static_cast<vtkIdType>(numbers.size());
  if (size > 0) array->SetArray(numbers.release(), size, 0, IdArray::VTK_DATA_ARRAY_DELETE);
  return array;
}

template <typename IdArray>
vtkSmartPointer<IdArray> offsets_of(const parallel::Array<std::uint8_t>& codes) {
  using Id = typename IdArray::ValueType;
  parallel::Array<Id> offsets(codes.size() + 1);
  Id offset = 0;
  for (std::int64_t c = 0; c < codes.size(); ++c) {
    offsets[c] = offset;
    offset += static_cast<Id>(kShapes[codes[c]].corners);
  }
  offsets[codes.size()] = offset;
  return adopt<IdArray>(std::move(offsets));
}

bool same_contents(vtkDataArray* a, vtkDataArray* b) {
  if (a->GetDataType() != b->GetDataType() || a->GetNumberOfValues() != b->GetNumberOfValues()) return false;
  const auto bytes =
      static_cast<std::size_t>(a->GetNumberOfValues()) * static_cast<std::size_t>(a->GetDataTypeSize());
  return bytes == 0 || std::memcmp(a->GetVoidPointer(0), b->GetVoidPointer(0), bytes) == 0;
}

}  // namespace

vtkdata::Cells make_cells(parallel::ShareCells cells, std::int64_t most_narrow) {
  std::int32_t* corners = cells.corners.data();
  for (const std::uint8_t code : cells.codes.span()) {
    if (code == fld::kPrism) turn_prism(corners);
    corners += kShapes[code].corners;
  }
  vtkdata::Cells made{vtkSmartPointer<vtkCellArray>::New(), nullptr};
  if (cells.corners.size() <= most_narrow) {
    const auto offsets = offsets_of<vtkTypeInt32Array>(cells.codes);
    made.connectivity->SetData(offsets, adopt<vtkTypeInt32Array>(std::move(cells.corners)));
  } else {
    parallel::Array<vtkTypeInt64Array::ValueType> wide(cells.corners.size());
    std::copy(cells.corners.span().begin(), cells.corners.span().end(), wide.span().begin());
    cells.corners = {};
    const auto offsets = offsets_of<vtkTypeInt64Array>(cells.codes);
    made.connectivity->SetData(offsets, adopt<vtkTypeInt64Array>(std::move(wide)));
  }
  for (std::uint8_t& code : cells.codes.span()) code = kShapes[code].type;
  made.types = adopt<vtkUnsignedCharArray>(std::move(cells.codes));
  return made;
}

bool are_same(const vtkdata::Cells& a, const vtkdata::Cells& b) {
  if (!a.connectivity || !b.connectivity) return false;
  return same_contents(a.types, b.types) &&
         same_contents(a.connectivity->GetConnectivityArray(), b.connectivity->GetConnectivityArray());
}

}  // namespace paraview
