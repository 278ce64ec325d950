#include "paraview/branch_choice.h"

namespace paraview {

void BranchChoice::apply(vtkDataAssembly* hierarchy, const std::vector<PartInfo>& parts,
                         Selection& selection) {
  if (selectors_ == applied_) return;
  std::vector<char> is_on(parts.size());
  for (const unsigned index : hierarchy->GetDataSetIndices(hierarchy->SelectNodes(selectors_)))
    is_on.at(index) = 1;
  for (std::size_t i = 0; i < parts.size(); ++i) selection.set(parts[i].name, is_on[i] != 0);
  // Last, because the lines above may throw: what was not finished is done again at the next request.
  applied_ = selectors_;
}

}  // namespace paraview
