#include "inspect/findings.h"

#include <algorithm>
#include <tuple>

#include "fmt/format.h"
#include "inspect/text_check.h"

namespace inspect {

void Findings::add(Finding finding) {
  if (counts_[finding.kind]++ < limit_) kept_.push_back(std::move(finding));
}

void Findings::sort() {
  std::stable_sort(kept_.begin(), kept_.end(), [](const Finding& a, const Finding& b) {
    return std::tie(a.offset, a.kind) < std::tie(b.offset, b.kind);
  });
}

std::uint64_t Findings::count(Severity severity) const {
  std::uint64_t sum = 0;
  for (const auto& [kind, count] : counts_) {
    if (info(kind).severity == severity) sum += count;
  }
  return sum;
}

bool Findings::has_enough(Kind kind) const {
  const auto found = counts_.find(kind);
  return found != counts_.end() && found->second >= limit_;
}

std::uint64_t Findings::left_out(Kind kind) const {
  const auto found = counts_.find(kind);
  return found == counts_.end() || found->second < limit_ ? 0 : found->second - limit_;
}

std::string shown(std::string_view bytes) {
  const bool is_whole = is_text(bytes);
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (is_whole || (byte >= 0x20 && byte < 0x7f)) {
      text += c;
    } else {
      text += fmt::format("\\x{:02x}", byte);
    }
  }
  return text;
}

std::string in_quotes(std::string_view bytes) {
  return '"' + shown(bytes) + '"';
}

}  // namespace inspect
