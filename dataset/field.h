// The variable catalogue: the one list of scalar and vector quantities of a whole dataset.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "dataset/fld_seek.h"

namespace fld {

class FLDFile;

class Field {
 public:
  // Adds the quantities of one indexed file that are not listed yet: all scalars of all its region sets, then
  // all vectors. A name keeps the label of its first appearance.
  void append(const FLDFile& file);

  // Names in the order of their first appearance, and the label of each.
  const std::vector<std::string>& scalar_names() const { return scalars_.names; }
  const std::vector<std::string>& scalar_labels() const { return scalars_.labels; }
  const std::vector<std::string>& vector_names() const { return vectors_.names; }
  const std::vector<std::string>& vector_labels() const { return vectors_.labels; }

 private:
  struct List {
    void add(const FLDTITLE& title);

    std::vector<std::string> names;
    std::vector<std::string> labels;
    std::unordered_set<std::string> known;
  };
  List scalars_;
  List vectors_;
};

}  // namespace fld
