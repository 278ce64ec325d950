// Parts that are switched on by branches of their hierarchy, as ParaView's panel does it.
#pragma once

#include <string>
#include <utility>
#include <vector>
#include <vtkDataAssembly.h>

#include "paraview/dataset_info.h"
#include "paraview/selection.h"

namespace paraview {

class BranchChoice {
 public:
  // Selectors of vtkDataAssembly, such as "/Parts/Volumes". At first those of the parts that are on at first.
  void clear() { selectors_.clear(); }
  void add(std::string selector) { selectors_.push_back(std::move(selector)); }

  // If the selectors are others than at the last call, switches on the parts that they select and the others
  // off. `hierarchy` is that of `parts`. Unchanged selectors leave the parts as somebody else has switched
  // them.
  void apply(vtkDataAssembly* hierarchy, const std::vector<PartInfo>& parts, Selection& selection);

 private:
  static constexpr char kAtFirst[] = "/Parts/Wholemesh";

  std::vector<std::string> selectors_ = {kAtFirst};
  std::vector<std::string> applied_ = {kAtFirst};
};

}  // namespace paraview
