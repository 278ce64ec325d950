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
  // Adds the quantities of an indexed file that are not listed yet: the scalars of all region sets, then the
  // vectors. A name keeps the first label seen.
  void append(const FLDFile& file);

  // Names and labels in order of first appearance.
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
