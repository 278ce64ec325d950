#include "host/diagnostic_text.h"

#include <unordered_set>

namespace host {
namespace {

constexpr std::string_view kTrace = "IN ( FLD): ";
constexpr std::string_view kGeometryUnread = "FAILED TO READ GEOMETRY DATA IN ";
constexpr std::string_view kGeometryMissing = "error : not found geometry data in current time.";

}  // namespace

std::vector<std::string_view> split_lines(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    if (!line.empty()) lines.push_back(line);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

std::string reason_in_diagnostics(std::string_view text) {
  std::string reason;
  int taken = 0;
  const std::vector<std::string_view> lines = split_lines(text);
  for (auto line = lines.rbegin(); line != lines.rend() && taken < 2; ++line) {
    if (line->starts_with(kTrace)) continue;
    reason = std::string(*line) + (taken == 0 ? "" : "; ") + reason;
    ++taken;
  }
  return reason;
}

std::vector<std::string> traced_files(std::string_view text) {
  std::vector<std::string> files;
  std::unordered_set<std::string_view> seen;
  for (const std::string_view line : split_lines(text)) {
    if (!line.starts_with(kTrace)) continue;
    const std::string_view file = line.substr(kTrace.size());
    if (seen.insert(file).second) files.emplace_back(file);
  }
  return files;
}

bool tells_geometry_failure(std::string_view text) {
  return text.find(kGeometryUnread) != std::string_view::npos ||
         text.find(kGeometryMissing) != std::string_view::npos;
}

}  // namespace host
