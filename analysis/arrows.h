// Vectors as arrows.
#pragma once

#include <vtkPolyData.h>
#include <vtkSmartPointer.h>

namespace analysis {

// Points of a surface at which arrows have room: at most one in each cube of a lattice with this distance.
// They keep their values. Points whose vector is zero or undefined do not count.
vtkSmartPointer<vtkPolyData> thinned(vtkPolyData* surface, double distance);

// The length of the longest of the vectors; 0 without any.
double longest_vector(vtkPolyData* points);

// An arrow at each point, along its vector and `scale` times as long.
vtkSmartPointer<vtkPolyData> arrows(vtkPolyData* points, double scale);

}  // namespace analysis
