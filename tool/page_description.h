// What the script of a page is told besides the scene.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "host/session.h"
#include "nlohmann/json.hpp"
#include "render/view.h"
#include "tool/page_options.h"
#include "tool/page_scene.h"
#include "tool/picture_parts.h"

namespace tool {

struct PageStart {
  const PageChoice& choice;
  std::vector<int> shown;  // numbers of parts, ascending, like the next
  std::vector<int> faint;
  std::optional<PictureScalar> scalar;  // whose variable is one of the choice's
  std::optional<std::array<double, 2>> range;
  render::View view;
  const PageOptions& options;
};

// The names of everything, the folders of the parts, the colour maps, and what the page shows at first. The
// session is at the first of the steps.
nlohmann::json describe_page(host::Session& session, const PageStart& start);

}  // namespace tool
