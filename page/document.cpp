#include "page/document.h"

#include "nlohmann/json.hpp"
#include "page/shell.h"

namespace page {

std::size_t empty_page_size() {
  return kShellBeforeTitle.size() + kShellBeforeData.size() + kShellEnd.size();
}

std::string escape_markup(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      case '\'':
        escaped += "&#39;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string escape_json(const nlohmann::json& json) {
  const std::string text = json.dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
  std::string escaped;
  escaped.reserve(text.size());
  for (const char c : text) {
    switch (c) {
      case '<':
        escaped += "\\u003c";
        break;
      case '>':
        escaped += "\\u003e";
        break;
      case '&':
        escaped += "\\u0026";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

void write_page(const std::string& title, nlohmann::json about, const Scene& scene,
                const std::vector<std::size_t>& steps,
                const std::function<void(std::string_view piece)>& write) {
  about["scene"] = scene.describe(steps);
  write(kShellBeforeTitle);
  write(escape_markup(title));
  write(kShellBeforeData);
  write("<script type=\"application/json\" id=\"scene\">");
  write(escape_json(about));
  write("</script>\n");
  scene.each_packed(steps, [&](const std::string& packed) {
    write("<script type=\"text/plain\" class=\"chunk\">");
    write(packed);
    write("</script>\n");
  });
  write(kShellEnd);
}

}  // namespace page
