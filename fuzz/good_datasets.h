// Small valid datasets that cover every construct of the format: the seeds of the fuzzers and the files for
// random calls.
#pragma once

#include <string>
#include <vector>

#include "testkit/description.h"

namespace fuzz {

struct GoodDataset {
  std::string name;
  std::vector<testkit::File> files;  // more than one for a series

  // The name of file number `index`.
  std::string file_name(std::size_t index) const;
};

std::vector<GoodDataset> good_datasets();

}  // namespace fuzz
