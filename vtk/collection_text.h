// The index files of a converted series: the composite dataset of a step (.vtm), which refers to the files of
// its parts, and the collection of the steps (.pvd).
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "host/part_tree.h"

namespace vtkdata {

// The text of a .vtm file with the hierarchy of `tree`. `name_of` returns the name of a part, `file_of` its
// file relative to the .vtm file.
std::string composite_text(const std::vector<host::PartFolder>& tree,
                           const std::function<std::string(int part)>& name_of,
                           const std::function<std::string(int part)>& file_of);

struct CollectionStep {
  float time = 0;
  std::string file;  // relative to the .pvd file
};

// The text of a .pvd file.
std::string collection_text(const std::vector<CollectionStep>& steps);

}  // namespace vtkdata
