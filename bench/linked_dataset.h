// A dataset that is open in the modules that are linked with the program.
#pragma once

#include <filesystem>

#include "testkit/box_dataset.h"
#include "testkit/temporary_directory.h"

namespace bench {

// Opens a box on construction and closes it at the end. Throws std::runtime_error when it does not open. The
// traces of the reader are thrown away.
class LinkedDataset {
 public:
  explicit LinkedDataset(const testkit::BoxOptions& options);
  LinkedDataset(const LinkedDataset&) = delete;
  LinkedDataset& operator=(const LinkedDataset&) = delete;
  ~LinkedDataset();

  const std::filesystem::path& file() const { return file_; }

 private:
  testkit::TemporaryDirectory directory_;
  std::filesystem::path file_;
};

// A cube of so many cells along each edge, with two volumes, a scalar and no vector.
testkit::BoxOptions cube(int cells);

}  // namespace bench
