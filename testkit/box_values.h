// The later files of a series over a box whose mesh stays.
#pragma once

#include "testkit/box_dataset.h"

namespace testkit {

// What box_file describes, without the mesh: the quantities of `options.cycle` and `options.time` alone.
File box_values_file(const BoxOptions& options);

}  // namespace testkit
