// The faces that a picture shows.
#pragma once

#include <vtkDataArray.h>
#include <vtkPolyData.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>

namespace render {

// The outer faces of a grid, as polygons. `scalars`, of one component, may be null; there is one value per
// cell or one per point. So may `vectors`, one per point.
vtkSmartPointer<vtkPolyData> outer_faces(vtkUnstructuredGrid* grid, vtkDataArray* scalars, bool per_cell,
                                         vtkDataArray* vectors = nullptr);

// With point normals that make curved surfaces look round and leave sharp edges sharp.
vtkSmartPointer<vtkPolyData> with_normals(vtkPolyData* faces);

// Borders and sharp edges as lines.
vtkSmartPointer<vtkPolyData> outline(vtkPolyData* faces);

// Faces by how many of their values are finite numbers. Any of the three may be empty. All share their
// points.
struct FacesByValues {
  vtkSmartPointer<vtkPolyData> defined;    // all values, or no scalars at all
  vtkSmartPointer<vtkPolyData> partial;    // some
  vtkSmartPointer<vtkPolyData> undefined;  // none
};
FacesByValues split_by_values(vtkPolyData* faces);

}  // namespace render
