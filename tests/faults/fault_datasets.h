// The datasets for the fault tests, small enough to try every byte.
#pragma once

#include <filesystem>

#include "testkit/description.h"

namespace faults {

// One file with every construct: two region sets, one with its regions one by one and one with them gathered,
// all element and face codes, materials, both precisions in one block after the other, scalars and vectors,
// undefined values, a cylindrical coordinate system, index base 1, blocks cut into records, a motion from its
// own geometry, items and sections of unknown titles. All texts are of a multiple of four characters, so that
// the file consists of words.
testkit::File every_construct();

// The second file of a series: it moves the mesh of `base_of_series` and has its own quantity.
testkit::File base_of_series();
testkit::File motion_of_series();

// Two files of a series whose mesh changes to one with more of everything.
testkit::File small_of_changing_series();
testkit::File large_of_changing_series();

// The dataset that must give the same answers after every damaged one.
testkit::File good_file();

}  // namespace faults
