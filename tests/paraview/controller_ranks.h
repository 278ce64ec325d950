// Ranks of a controller of VTK that are threads of this process.
#pragma once

#include <cstddef>
#include <functional>
#include <vtkMultiProcessController.h>

namespace paraview_test {

// Runs `work` on every rank, each in a thread of its own, and comes back when all are done. Returns the bytes
// of the longest message. Ends the program when a rank waits for a minute.
std::size_t run_on_ranks(int size, const std::function<void(vtkMultiProcessController*)>& work);

}  // namespace paraview_test
