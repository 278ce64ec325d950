// What the script of a page is told besides the scene.
#pragma once

#include <array>

#include "host/session.h"
#include "nlohmann/json_fwd.hpp"
#include "render/view.h"
#include "tool/page_entries.h"
#include "tool/page_options.h"
#include "tool/page_scene.h"

namespace tool {

struct PageStart {
  const PageChoice& choice;
  const PageEntries& entries;
  std::array<double, 2> range;  // of the choice's scalar
  render::View view;
  const PageOptions& options;
};

// The names of everything, the folders of the parts, the colour maps, and what the page shows at first.
nlohmann::json describe_page(host::Session& session, const PageStart& start);

}  // namespace tool
