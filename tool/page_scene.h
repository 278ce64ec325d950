// Takes out of a session what a page shows.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/session.h"
#include "page/scene.h"
#include "tool/chosen_parts.h"

namespace tool {

// A plane that is perpendicular to an axis.
struct CutPlane {
  int axis = 0;
  double position = 0;
};

// What a page lists as a part.
struct PageEntry {
  PartIdentity part;
  int number = 0;               // at the first step
  std::string name;             // UTF-8
  std::optional<CutPlane> cut;  // none: the part's outer faces
};

struct PageChoice {
  std::vector<int> steps;
  std::vector<PageEntry> entries;
  std::vector<int> variables;  // numbers
};

// All chosen steps. `after_part` is called after every part, with whether it was the step's first, and
// may throw; `after_step` with the count of steps that are done.
page::Scene make_scene(host::Session& session, const PageChoice& choice, page::Precision precision,
                       const std::function<void(bool is_first)>& after_part,
                       const std::function<void(std::size_t)>& after_step);

}  // namespace tool
