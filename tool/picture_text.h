// The texts of pictures: titles, and the font that has their characters.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "host/session.h"
#include "tool/progress.h"

namespace tool {

// The lines of a title as UTF-8 without control characters.
std::string title_lines(const std::string& title);

// The file, the step and its time.
std::string usual_title(const host::Session& session);

// The name of a file as UTF-8 without control characters.
std::string shown_file_name(const std::string& path);

// Tells the user which characters fonts lack.
class FontReport {
 public:
  // Each character of a font is told once.
  void tell_missing(const std::vector<std::uint32_t>& characters, const std::string& font,
                    Progress& progress);

 private:
  std::set<std::uint32_t> told_;
};

}  // namespace tool
