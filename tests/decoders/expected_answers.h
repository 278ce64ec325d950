// Computes what a host should get of a dataset from what inspect/ decodes of its files.
#pragma once

#include <vector>

#include "tests/decoders/answers.h"
#include "tests/decoders/decoded_file.h"

namespace decoders {

// For a host that requests everything as served_answers does, in the same order: what is there at a step
// depends on the steps before. `files`: those of the series, in its order.
Answers expected_answers(const std::vector<DecodedFile>& files);

}  // namespace decoders
