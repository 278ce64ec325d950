// A page as the text of an HTML file: the browser's part, which is built in, with a scene in it.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "nlohmann/json_fwd.hpp"
#include "page/scene.h"

namespace page {

// Bytes of a page without any data.
std::size_t empty_page_size();

// Writes the page, piece by piece. `about` is what the page's script needs besides the scene
// (browser/scene.js); texts are UTF-8, and none of them can become markup or script. Names of members must be
// ASCII.
void write_page(const std::string& title, nlohmann::json about, const Scene& scene,
                const std::vector<std::size_t>& steps,
                const std::function<void(std::string_view piece)>& write);

// Text as it may stand between tags and in quoted attributes.
std::string escape_markup(std::string_view text);

// JSON as it may stand in a script element: ASCII, without "<" and what else HTML gives a meaning.
std::string escape_json(const nlohmann::json& json);

}  // namespace page
