#include "inspect/report.h"

#include "fmt/format.h"
#include "nlohmann/json.hpp"

namespace inspect {
namespace {

std::string counted(std::uint64_t count, std::string_view what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

bool is_shown(Kind kind, bool notes) {
  return notes || info(kind).severity != Severity::note;
}

std::string summary(const FileReport& report, bool notes) {
  const Findings& findings = report.findings;
  std::string text;
  for (const Severity severity : {Severity::error, Severity::warning, Severity::note}) {
    const std::uint64_t count = findings.count(severity);
    if (count == 0 || (severity == Severity::note && !notes)) continue;
    text += (text.empty() ? "" : ", ") + counted(count, name(severity));
  }
  if (text.empty()) text = "no findings";
  if (report.walk.end != WalkEnd::stopped) return text;
  return fmt::format("{}; nothing behind offset {} of {} was looked at", text, report.walk.offset,
                     report.size);
}

// The finding with texts of the file decoded.
Finding decoded(Finding finding, const Decode& decode) {
  finding.place = decode(finding.place);
  finding.wanted = decode(finding.wanted);
  // This text is a path.
  if (finding.kind != Kind::cycle_twice) finding.found = decode(finding.found);
  return finding;
}

}  // namespace

std::string finding_text(const Finding& finding) {
  const KindInfo& kind = info(finding.kind);
  const std::string place = finding.place.empty() ? "" : fmt::format(" ({})", finding.place);
  return fmt::format("{} {} at {}: {}{}: wanted {}, found {}", name(kind.severity), number_text(kind.kind),
                     finding.offset, kind.text, place, finding.wanted, finding.found);
}

std::string report_text(const FileReport& report, bool notes, const Decode& decode) {
  if (!report.reason.empty()) return fmt::format("{}: cannot be read: {}\n", report.path, report.reason);
  std::string text;
  for (const Finding& finding : report.findings.kept()) {
    if (is_shown(finding.kind, notes))
      text += fmt::format("{}: {}\n", report.path, finding_text(decoded(finding, decode)));
  }
  for (const auto& [kind, count] : report.findings.counts()) {
    const std::uint64_t left_out = report.findings.left_out(kind);
    if (left_out == 0 || !is_shown(kind, notes)) continue;
    text += fmt::format("{}: {}: {} more of {}\n", report.path, number_text(kind), left_out, count);
  }
  return text + fmt::format("{}: {}\n", report.path, summary(report, notes));
}

nlohmann::ordered_json finding_json(const Finding& finding, const Decode& decode) {
  const KindInfo& kind = info(finding.kind);
  const Finding text = decoded(finding, decode);
  return {{"number", number_text(kind.kind)},
          {"severity", std::string(name(kind.severity))},
          {"offset", text.offset},
          {"text", std::string(kind.text)},
          {"place", text.place},
          {"wanted", text.wanted},
          {"found", text.found}};
}

nlohmann::ordered_json report_json(const FileReport& report, const Decode& decode) {
  using Json = nlohmann::ordered_json;
  Json json{{"file", report.path}, {"readable", report.is_readable()}};
  json["reason"] = report.reason.empty() ? Json() : Json(report.reason);
  json["size"] = report.size;
  json["complete"] = report.reason.empty() && report.walk.end == WalkEnd::complete;
  json["ended_at"] = report.walk.offset;
  json["errors"] = report.findings.count(Severity::error);
  json["warnings"] = report.findings.count(Severity::warning);
  json["notes"] = report.findings.count(Severity::note);
  json["findings"] = Json::array();
  for (const Finding& finding : report.findings.kept())
    json["findings"].push_back(finding_json(finding, decode));
  json["left_out"] = Json::object();
  for (const auto& [kind, count] : report.findings.counts()) {
    if (const std::uint64_t left_out = report.findings.left_out(kind))
      json["left_out"][number_text(kind)] = left_out;
  }
  return json;
}

}  // namespace inspect
