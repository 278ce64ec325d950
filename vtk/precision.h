// The width of the real numbers in VTK arrays. A reader hands out single precision; double is for programs
// that want nothing else.
#pragma once

namespace vtkdata {

enum class Precision { single_width, double_width };

}  // namespace vtkdata
