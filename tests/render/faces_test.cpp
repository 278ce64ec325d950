#include "render/faces.h"

#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <vector>
#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

vtkSmartPointer<vtkFloatArray> array_of(const std::vector<float>& values) {
  auto array = vtkSmartPointer<vtkFloatArray>::New();
  for (const float value : values) array->InsertNextValue(value);
  return array;
}

// Three triangles side by side: of points 0 to 2, 1 to 3 and 2 to 4.
vtkSmartPointer<vtkPolyData> strip() {
  vtkNew<vtkPoints> points;
  for (int i = 0; i < 5; ++i) points->InsertNextPoint(i, i % 2, 0);
  vtkNew<vtkCellArray> triangles;
  for (vtkIdType i = 0; i < 3; ++i) {
    const std::array<vtkIdType, 3> corners = {i, i + 1, i + 2};
    triangles->InsertNextCell(3, corners.data());
  }
  auto faces = vtkSmartPointer<vtkPolyData>::New();
  faces->SetPoints(points);
  faces->SetPolys(triangles);
  return faces;
}

// The numbers of faces with all, some and no values.
std::array<vtkIdType, 3> counts(vtkPolyData* faces) {
  const render::FacesByValues split = render::split_by_values(faces);
  return {split.defined->GetNumberOfCells(), split.partial->GetNumberOfCells(),
          split.undefined->GetNumberOfCells()};
}

using Counts = std::array<vtkIdType, 3>;

TEST(SplitByValues, GoesByTheCornersOfAFace) {
  const vtkSmartPointer<vtkPolyData> faces = strip();
  faces->GetPointData()->SetScalars(array_of({1, 2, 3, 4, 5}));
  EXPECT_EQ(counts(faces), (Counts{3, 0, 0}));
  faces->GetPointData()->SetScalars(array_of({kNaN, kNaN, kInfinity, 4, 5}));
  EXPECT_EQ(counts(faces), (Counts{0, 2, 1}));
  faces->GetPointData()->SetScalars(array_of({1, 2, 3, kNaN, kNaN}));
  EXPECT_EQ(counts(faces), (Counts{1, 2, 0}));
}

TEST(SplitByValues, GoesByTheValueOfAFace) {
  const vtkSmartPointer<vtkPolyData> faces = strip();
  faces->GetCellData()->SetScalars(array_of({1, kNaN, 3}));
  EXPECT_EQ(counts(faces), (Counts{2, 0, 1}));
  const render::FacesByValues split = render::split_by_values(faces);
  EXPECT_EQ(split.defined->GetCellData()->GetScalars()->GetComponent(1, 0), 3);
  EXPECT_EQ(split.defined->GetCell(1)->GetPointId(0), 2);
}

TEST(SplitByValues, FacesWithoutScalarsStayTogether) {
  EXPECT_EQ(counts(strip()), (Counts{3, 0, 0}));
}

}  // namespace
