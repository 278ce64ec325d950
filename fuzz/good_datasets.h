// Small sound datasets that have every construct of the format between them: the first inputs of the fuzzer,
// and what random calls are made on.
#pragma once

#include <string>
#include <vector>

#include "testkit/description.h"

namespace fuzz {

struct GoodDataset {
  std::string name;
  std::vector<testkit::File> files;  // more than one: a series

  // What file number `index` is called.
  std::string file_name(std::size_t index) const;
};

std::vector<GoodDataset> good_datasets();

}  // namespace fuzz
