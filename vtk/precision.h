// The precision of VTK arrays. A reader delivers single precision; double is for programs that require it.
#pragma once

namespace vtkdata {

enum class Precision { single_width, double_width };

}  // namespace vtkdata
