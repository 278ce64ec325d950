#include "inspect/series.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <system_error>
#include <tuple>

#include "inspect/text_check.h"

namespace inspect {
namespace {

constexpr std::size_t kExtension = 4;  // the last characters of a file name, which may be any

struct SplitName {
  std::string folder;  // with a trailing separator, or empty
  std::string base;
};

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

std::optional<SplitName> split(const std::string& path) {
  const std::size_t separator = path.find_last_of("/\\");
  const std::size_t begin = separator == std::string::npos ? 0 : separator + 1;
  std::string name = path.substr(begin);
  const std::size_t dot = name.rfind('.');
  if (dot != std::string::npos) name.resize(dot);
  const std::size_t underscore = name.find_last_not_of("0123456789");
  if (underscore == std::string::npos || name[underscore] != '_' || underscore + 1 == name.size()) {
    return std::nullopt;
  }
  return SplitName{path.substr(0, begin), name.substr(0, underscore)};
}

// The cycle of a file of the series; none for other files.
std::optional<std::int32_t> cycle_of(std::string_view name, std::string_view base) {
  if (name.size() < base.size() + 2 + kExtension || name[base.size()] != '_') return std::nullopt;
  const bool same = std::equal(base.begin(), base.end(), name.begin(),
                               [](char a, char b) { return folded(a) == folded(b); });
  const std::string digits(name.substr(base.size() + 1, name.size() - base.size() - 1 - kExtension));
  if (!same || !std::all_of(digits.begin(), digits.end(), is_digit)) return std::nullopt;
  // Truncated to 32 bits, as in readers.
  const auto cycle = static_cast<std::int32_t>(std::strtoll(digits.c_str(), nullptr, 10));
  return cycle < 0 ? std::nullopt : std::optional(cycle);
}

}  // namespace

bool has_cycle(const std::string& path) {
  return split(path).has_value();
}

std::vector<SeriesFile> find_series(const std::string& path) {
  const auto name = split(path);
  if (!name) return {};
  std::vector<SeriesFile> files;
  std::error_code error;
  const std::filesystem::path folder = name->folder.empty() ? "." : name->folder;
  for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string other = entry->path().filename().string();
    if (const auto cycle = cycle_of(other, name->base)) files.push_back({name->folder + other, *cycle});
  }
  std::sort(files.begin(), files.end(), [](const SeriesFile& a, const SeriesFile& b) {
    return std::tie(a.cycle, a.path) < std::tie(b.cycle, b.path);
  });
  return files;
}

}  // namespace inspect
