#include "tests/faults/documented.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace faults {
namespace {

constexpr std::array<std::string_view, 14> kFailureMessages = {
    "FILE NOT FOUND : %s",
    "error : invalid file extension.",
    "FAILED TO OPEN %s",
    "This is not FLD file.",
    "FLD FILE VERSION HAS TO BE 4.",
    "L2D3D MUST BE 3 IN FLD",
    "NOT FOUND GEOMETRY DATA IN THE FIRST FLD FILE",
    "INVALID OVERLAP REGION WAS SPECIFIED.",
    "ERROR : %s",
    "FAILED TO READ GEOMETRY.",
    "error : failed to allocate memory for geometry.",
    "error : failed to open fld file : %s.",
    "error : failed to seek fld file.",
    "FAILED TO READ GEOMETRY DATA IN %s."};

constexpr std::array<std::string_view, 16> kExceptionTexts = {
    "UNEXPECTED END OF FILE AT BYTE %d.",
    "READ ERROR AT BYTE %d.",
    "ERROR IN FLDV4_I_END",
    "THIS FLD FILE HAS AN INVALID DATA TYPE.",
    "NEGATIVE COUNT %d AT BYTE %d.",
    "COUNT %d EXCEEDS THE REST OF THE FILE AT BYTE %d.",
    "NEGATIVE RECORD LENGTH %d AT BYTE %d.",
    "NEGATIVE RECORD SIZE IN A RULE RECORD.",
    "TOO MANY DATA RECORDS IN A DATA BLOCK.",
    "TOO FEW DATA RECORDS IN A DATA BLOCK.",
    "TOO MANY CHARACTERS IN REGION NAMES.",
    "A REGION SET CANNOT BE FOUND.",
    "MATERIAL NUMBER OUT OF RANGE.",
    "HANDLING AN INVALID DATA TYPE(%d).",
    "NOT ENOUGH MEMORY",
    "ATTEMPT TO REALLOC UNKNOWN POINTER"};

// Source and expression.
constexpr std::array<std::pair<std::string_view, std::string_view>, 12> kAssertions = {{
    {"fld", "fldpath"},
    {"fld", "!m_fld.empty()"},
    {"fld", "!m_overlap.empty()"},
    {"fld", "overlap != m_overlap.end()"},
    {"fld", "it_s->m_overlap.size() == it_d->m_overlap.size()"},
    {"fld", "static_cast< size_t >( ioverlap ) < m_fld[i].m_overlap.size()"},
    {"fld_reader", "ref_fldfile"},
    {"Convert_read_fld", "ndat == 3"},
    {"Convert_read_fld", "ndat == 1"},
    {"Convert_read_fld", "ndat == 2"},
    {"Convert_read_fld", "ndat == 8"},
    {"Convert_common", "0"},
}};

bool has_failure_message(const std::string& lines) {
  for (std::size_t begin = 0; begin < lines.size();) {
    const std::size_t end = std::min(lines.find('\n', begin), lines.size());
    const std::string_view line = std::string_view(lines).substr(begin, end - begin);
    const auto ends_line = [line](std::string_view pattern) {
      // A message without a newline may precede it.
      const std::size_t start = line.find(pattern.substr(0, pattern.find('%')));
      return start != std::string_view::npos && matches(pattern, line.substr(start));
    };
    if (std::any_of(kFailureMessages.begin(), kFailureMessages.end(), ends_line)) return true;
    begin = end + 1;
  }
  return false;
}

}  // namespace

bool matches(std::string_view pattern, std::string_view text) {
  const std::size_t hole = pattern.find('%');
  if (hole == std::string_view::npos) return pattern == text;
  if (text.substr(0, hole) != pattern.substr(0, hole)) return false;
  const bool is_number = pattern.at(hole + 1) == 'd';
  const std::string_view rest = pattern.substr(hole + 2);
  for (std::size_t end = hole;; ++end) {
    if (end > hole && matches(rest, text.substr(end))) return true;
    if (end == text.size()) return false;
    const char next = text[end];
    if (is_number && std::isdigit(static_cast<unsigned char>(next)) == 0 && next != '-') return false;
  }
}

std::string undocumented(const CallEnding& call) {
  const std::string& detail = call.detail;
  switch (call.outcome) {
    case Outcome::kServed:
      return "";
    case Outcome::kFailed:
      return has_failure_message(call.lines) ? "" : detail + " failed without a documented message";
    case Outcome::kException: {
      const std::string text = detail.substr(detail.find(": ") + 2);
      const bool is_known = std::any_of(kExceptionTexts.begin(), kExceptionTexts.end(),
                                        [&](std::string_view pattern) { return matches(pattern, text); });
      return is_known ? "" : "undocumented exception from " + detail;
    }
    case Outcome::kAssertion: {
      const bool is_known = std::any_of(kAssertions.begin(), kAssertions.end(), [&](const auto& assertion) {
        return detail.starts_with(std::string(assertion.first) + ": ") &&
               detail.ends_with(": " + std::string(assertion.second));
      });
      return is_known ? "" : "undocumented assertion " + detail;
    }
    case Outcome::kOutOfMemory:
      return "no memory for " + detail;
    case Outcome::kBrokenPromise:
      break;
  }
  return detail;
}

std::string undocumented(const Ending& ending) {
  std::string reasons;
  for (const CallEnding& call : ending.unserved) {
    const std::string reason = undocumented(call);
    if (reason.empty()) continue;
    if (!reasons.empty()) reasons += "; ";
    reasons += reason;
  }
  return reasons;
}

}  // namespace faults
