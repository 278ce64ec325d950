// Takes out of a session what a page shows.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "host/session.h"
#include "page/scene.h"
#include "tool/page_entries.h"
#include "tool/picture_parts.h"
#include "tool/picture_scalar.h"

namespace tool {

struct PageChoice {
  std::vector<int> steps;
  std::vector<Quantity> variables;      // whole ones
  std::optional<PictureScalar> scalar;  // what is shown at first
};

struct PageData {
  page::Scene scene;
  ValueRange range;  // of the scalar on what is coloured at first, at all steps
};

// All chosen steps. What the steps have of the parts is added to `entries`. `after_part` is called after
// every part, with whether it was the step's first, and may throw; `after_step` with the count of steps that
// are done.
PageData read_page_data(host::Session& session, const PageChoice& choice, PageEntries& entries,
                        page::Precision precision, const std::function<void(bool is_first)>& after_part,
                        const std::function<void(std::size_t)>& after_step);

}  // namespace tool
