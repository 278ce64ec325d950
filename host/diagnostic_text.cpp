#include "host/diagnostic_text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <unordered_set>
#include <utility>

namespace host {
namespace {

constexpr std::string_view kTrace = "IN ( FLD): ";
constexpr std::string_view kWarning = "WARNING : ";
constexpr std::string_view kReadDone = "read done";
constexpr std::string_view kGeometryUnread = "FAILED TO READ GEOMETRY";
// Report that a step's geometry could not be loaded.
constexpr std::array<std::string_view, 3> kGeometryFailures = {
    "FAILED TO READ GEOMETRY DATA IN ", "error : not found geometry data in current time.",
    "error : failed to allocate memory for geometry."};

// What precedes and follows the path in the lines that name a file. A trace is written before its file is
// read.
constexpr std::array<std::pair<std::string_view, std::string_view>, 5> kFileLines = {
    {{kTrace, ""},
     {"FILE NOT FOUND : ", ""},
     {"FAILED TO OPEN ", ""},
     {"FAILED TO READ GEOMETRY DATA IN ", "."},
     {"error : failed to open fld file : ", "."}}};

constexpr std::size_t kKeptAtEachEnd = std::size_t{64} << 10;
constexpr std::string_view kLeftOut = " bytes of diagnostics left out)";

bool is_reason(std::string_view message) {
  return !message.ends_with(kLeftOut) && !message.starts_with(kTrace) && !message.starts_with(kWarning) &&
         message != kReadDone;
}

// The C library prefixes the report of an assertion with the program's name.
std::string_view without_program_name(std::string_view message) {
  const std::string_view name = program_invocation_short_name;
  if (message.starts_with(name) && message.substr(name.size()).starts_with(": "))
    message.remove_prefix(name.size() + 2);
  return message;
}

// The messages of `text`. One kind of message has no line end, so another may follow it in the same line.
std::vector<std::string_view> split_messages(std::string_view text) {
  std::vector<std::string_view> messages;
  for (const std::string_view line : split_lines(text)) {
    const std::size_t second = line.find(kGeometryUnread, 1);
    messages.push_back(line.substr(0, second));
    if (second != std::string_view::npos) messages.push_back(line.substr(second));
  }
  return messages;
}

// The rest of each line that begins with `start`, each text once.
std::vector<std::string> texts_after(std::string_view start, std::string_view text) {
  std::vector<std::string> found;
  std::unordered_set<std::string_view> seen;
  for (const std::string_view line : split_lines(text)) {
    if (!line.starts_with(start)) continue;
    const std::string_view rest = line.substr(start.size());
    if (seen.insert(rest).second) found.emplace_back(rest);
  }
  return found;
}

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
  constexpr std::size_t kMaxLength = 500;
  std::string reason;
  int taken = 0;
  const std::vector<std::string_view> messages = split_messages(text);
  for (auto message = messages.rbegin(); message != messages.rend() && taken < 2; ++message) {
    if (!is_reason(*message)) continue;
    const std::string_view said = without_program_name(*message);
    std::string part(said.substr(said.size() - std::min(said.size(), kMaxLength)));
    if (taken++ > 0) part += "; ";
    reason.insert(0, part);
  }
  return reason;
}

std::vector<std::string> traced_files(std::string_view text) {
  return texts_after(kTrace, text);
}

std::string last_named_file(std::string_view text) {
  std::vector<std::string_view> messages = split_messages(text);
  for (auto message = messages.rbegin(); message != messages.rend(); ++message) {
    for (const auto& [before, after] : kFileLines) {
      if (!message->starts_with(before) || !message->ends_with(after)) continue;
      message->remove_prefix(before.size());
      message->remove_suffix(after.size());
      return std::string(*message);
    }
  }
  return "";
}

std::vector<std::string> warnings(std::string_view text) {
  return texts_after(kWarning, text);
}

std::string shortened(std::string_view text) {
  if (text.size() <= 2 * kKeptAtEachEnd) return std::string(text);
  // Half a line could name another file than the whole one.
  std::string_view head = text.substr(0, kKeptAtEachEnd);
  const std::size_t head_end = head.rfind('\n');
  if (head_end != std::string_view::npos) head = head.substr(0, head_end + 1);
  std::string_view tail = text.substr(text.size() - kKeptAtEachEnd);
  const std::size_t line_end = tail.find('\n');
  if (line_end != std::string_view::npos && line_end + 1 < tail.size()) tail.remove_prefix(line_end + 1);
  const std::size_t left_out = text.size() - head.size() - tail.size();
  const std::string line_break = head.ends_with('\n') ? "" : "\n";
  return std::string(head) + line_break + "(" + std::to_string(left_out) + std::string(kLeftOut) + "\n" +
         std::string(tail);
}

bool tells_geometry_failure(std::string_view text) {
  return std::any_of(kGeometryFailures.begin(), kGeometryFailures.end(),
                     [&](std::string_view message) { return text.find(message) != std::string_view::npos; });
}

}  // namespace host
