#include "tool/picture_text.h"

#include <cstddef>
#include <filesystem>
#include <sstream>
#include <unistd.h>

#include "fmt/format.h"
#include "host/text_encoding.h"
#include "tool/best_effort_write.h"

namespace tool {

std::string title_lines(const std::string& title) {
  std::vector<std::string> lines;
  std::istringstream stream(title);
  for (std::string line; std::getline(stream, line);)
    lines.push_back(host::without_controls(host::message_to_utf8(line)));
  return fmt::format("{}", fmt::join(lines, "\n"));
}

std::string usual_title(const host::Session& session) {
  const float time = session.variable_times().times[static_cast<std::size_t>(session.step())];
  return fmt::format("{}    step {}    t = {}", shown_file_name(session.path().string()), session.step(),
                     time);
}

std::string shown_file_name(const std::string& path) {
  return host::without_controls(host::message_to_utf8(std::filesystem::path(path).filename().string()));
}

void FontReport::tell_missing(const std::vector<std::uint32_t>& characters, const std::string& font,
                              Progress& progress) {
  std::string missing;
  for (const std::uint32_t character : characters) {
    if (!told_.insert(character).second) continue;
    missing += fmt::format("{}U+{:04X}", missing.empty() ? "" : ", ", character);
  }
  if (missing.empty()) return;
  progress.erase();
  const std::string name = font.empty() ? "the built-in font" : font;
  write_if_possible(STDERR_FILENO,
                    fmt::format("fldtool: {} lacks the characters {} (--font names another font)\n",
                                host::message_to_utf8(name), missing));
}

}  // namespace tool
