#include "dataset/series.h"

#include <algorithm>
#include <cstdlib>
#include <dirent.h>
#include <memory>
#include <string_view>

namespace fld {

namespace {

constexpr size_t kExtensionLength = 4;  // of file names in a series, including the dot

// ASCII only, independent of the host's locale.
char folded(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool starts_with_any_case(std::string_view text, std::string_view prefix) {
  return text.size() >= prefix.size() && std::equal(prefix.begin(), prefix.end(), text.begin(),
                                                    [](char a, char b) { return folded(a) == folded(b); });
}

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

// The digits between "<base>_" and the last four characters; empty if the name is not in the series.
std::string_view cycle_digits(std::string_view entry, std::string_view base) {
  if (entry.size() < base.size() + 2 + kExtensionLength) return {};
  if (!starts_with_any_case(entry, base) || entry[base.size()] != '_') return {};
  const auto digits = entry.substr(base.size() + 1, entry.size() - base.size() - 1 - kExtensionLength);
  return std::all_of(digits.begin(), digits.end(), is_digit) ? digits : std::string_view{};
}

// Values beyond 64 bits saturate; the result is truncated to 32 bits.
int cycle_number(std::string_view digits) {
  return static_cast<int>(strtol(std::string(digits).c_str(), nullptr, 10));
}

}  // namespace

SeriesName::SeriesName(const std::string& path) {
  const size_t separator = path.find_last_of("/\\");
  std::string name = path;
  if (separator != std::string::npos) {
    directory = path.substr(0, separator);
    name = path.substr(separator + 1);
  }
  const size_t dot = name.rfind('.');
  if (dot != std::string::npos) {
    extension = name.substr(dot + 1);
    name.resize(dot);
  }
  const auto digits_begin = std::find_if_not(name.rbegin(), name.rend(), is_digit).base();
  if (digits_begin == name.end() || digits_begin == name.begin() || *(digits_begin - 1) != '_') return;
  cycle.assign(digits_begin, name.end());
  base.assign(name.begin(), digits_begin - 1);
}

bool SeriesName::has_fld_extension() const {
  return starts_with_any_case(extension, "fld");
}

void search_fld(const char* dir, const char* base, std::vector<std::string>& files,
                std::vector<int>& cycles) {
  struct Close {
    void operator()(DIR* listing) const { closedir(listing); }
  };
  const std::unique_ptr<DIR, Close> listing(opendir(dir));
  if (listing == nullptr) return;
  while (const dirent* entry = readdir(listing.get())) {
    const auto digits = cycle_digits(entry->d_name, base);
    if (digits.empty()) continue;
    const int cycle = cycle_number(digits);
    if (cycle < 0) continue;
    files.push_back(std::string(dir) + "/" + entry->d_name);
    cycles.push_back(cycle);
  }
}

std::vector<std::string> find_series(const std::string& directory, const std::string& base) {
  std::vector<std::string> files;
  std::vector<int> cycles;
  search_fld(directory.c_str(), base.c_str(), files, cycles);
  std::vector<FCYC> series;
  for (size_t i = 0; i < files.size(); ++i) series.push_back({std::move(files[i]), cycles[i]});
  std::sort(series.begin(), series.end(), FCYC::compare_cyc);
  std::transform(series.begin(), series.end(), files.begin(),
                 [](FCYC& entry) { return std::move(entry.name); });
  return files;
}

}  // namespace fld
