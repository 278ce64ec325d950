#include "tool/suggestions.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <utility>

namespace tool {
namespace {

constexpr std::size_t kMostNames = 3;
constexpr std::size_t kLongestText = 200;  // the comparison takes the product of the lengths

std::string lower_case(std::string_view text) {
  std::string result(text);
  for (char& character : result)
    character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
  return result;
}

// How many bytes have to be inserted, removed, replaced or exchanged with their neighbour.
std::size_t edit_distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> before_last;
  std::vector<std::size_t> last(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) last[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::vector<std::size_t> row(b.size() + 1, i);
    for (std::size_t j = 1; j <= b.size(); ++j) {
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] == b[j - 1] ? 0U : 1U)});
      const bool is_exchange = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (is_exchange) row[j] = std::min(row[j], before_last[j - 2] + 1);
    }
    before_last = std::exchange(last, std::move(row));
  }
  return last.back();
}

}  // namespace

std::vector<std::string> nearest_names(std::string_view text, const std::vector<std::string>& names) {
  const std::string wanted = lower_case(text);
  if (wanted.empty() || wanted.size() > kLongestText) return {};
  const std::size_t farthest = wanted.size() < 2 ? 0 : std::max<std::size_t>(1, wanted.size() / 3);
  std::vector<std::pair<std::size_t, std::string>> near;
  for (const std::string& name : names) {
    const std::string candidate = lower_case(std::string_view(name).substr(0, kLongestText));
    std::size_t distance = edit_distance(wanted, candidate);
    // A beginning is near, however much is missing.
    const bool is_beginning = wanted.size() > 1 && candidate.starts_with(wanted);
    if (!is_beginning && distance > farthest) continue;
    if (is_beginning) distance = std::min<std::size_t>(distance, 1);
    const bool is_known =
        std::any_of(near.begin(), near.end(), [&](const auto& other) { return other.second == name; });
    if (!is_known) near.emplace_back(distance, name);
  }
  std::stable_sort(near.begin(), near.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<std::string> nearest;
  for (auto& [distance, name] : near) {
    if (nearest.size() < kMostNames) nearest.push_back(std::move(name));
  }
  return nearest;
}

std::string suggestion(std::string_view before, std::string_view text,
                       const std::vector<std::string>& names) {
  const std::vector<std::string> nearest = nearest_names(text, names);
  if (nearest.empty()) return {};
  std::string result = std::string(before) + "did you mean ";
  for (std::size_t i = 0; i < nearest.size(); ++i) {
    if (i > 0) result += i + 1 == nearest.size() ? " or " : ", ";
    result += "'" + nearest[i] + "'";
  }
  return result + "?";
}

}  // namespace tool
