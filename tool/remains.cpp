#include "tool/remains.h"

#include <algorithm>
#include <utility>

#include "fmt/format.h"
#include "host/text_encoding.h"
#include "inspect/byte_source.h"
#include "inspect/check.h"
#include "inspect/report.h"
#include "inspect/series.h"
#include "inspect/visitor.h"
#include "inspect/walker.h"
#include "nlohmann/json.hpp"
#include "tool/interrupt.h"
#include "tool/json_values.h"

namespace tool {
namespace {

constexpr std::size_t kMostProblems = 20;

class Collector : public inspect::Visitor {
 public:
  explicit Collector(std::vector<FileRemains::Entry>& entries) : entries_(entries) {}

  void title(const inspect::Title& title) override {
    const bool has_body = title.info != nullptr && title.info->read != nullptr;
    entries_.push_back({title.record.offset, title.region_set, host::to_utf8(title.text),
                        title.info != nullptr && !has_body});
  }

  void end_section(const inspect::Title& /*title*/, const inspect::Record& rule) override {
    if (rule.length > 0 && !entries_.empty()) entries_.back().is_whole = true;
  }

 private:
  std::vector<FileRemains::Entry>& entries_;
};

FileRemains remains_of(const std::string& file) {
  FileRemains remains;
  remains.file = file;
  inspect::check_files({file}, {}, [&](const inspect::FileReport& report) {
    remains.size = report.size;
    remains.is_fld = report.is_readable();
    remains.has_errors = !report.reason.empty() || report.findings.count(inspect::Severity::error) > 0;
    if (!report.reason.empty()) remains.problems.push_back(report.reason);
    for (const inspect::Finding& finding : report.findings.kept()) {
      if (inspect::info(finding.kind).severity == inspect::Severity::note) continue;
      if (remains.problems.size() < kMostProblems)
        remains.problems.push_back(host::to_utf8(inspect::finding_text(finding)));
    }
  });
  if (!remains.is_fld) return remains;
  try {
    inspect::FileSource source(file);
    Collector collector(remains.entries);
    const inspect::WalkResult walk = inspect::walk(source, collector);
    remains.is_complete = walk.end == inspect::WalkEnd::complete;
    remains.ended_at = walk.offset;
  } catch (const inspect::ReadError& error) {
    remains.problems.emplace_back(error.what());
  }
  return remains;
}

void add_text(const FileRemains& remains, std::string& text) {
  text +=
      fmt::format("\nwhat is there of {}, {} bytes\n", host::without_controls(remains.file), remains.size);
  if (remains.is_fld) {
    text += fmt::format("  {:>10}  {:>3}  title\n", "offset", "set");
    for (const FileRemains::Entry& entry : remains.entries) {
      text += fmt::format("  {:>10}  {:>3}  {}{}\n", entry.offset,
                          entry.region_set < 0 ? "-" : std::to_string(entry.region_set),
                          host::without_controls(entry.title), entry.is_whole ? "" : "  (not whole)");
    }
    text += remains.is_complete
                ? fmt::format("  {:>10}       end of the file\n", remains.ended_at)
                : fmt::format("  {:>10}       stopped here, {} bytes before the end of the file\n",
                              remains.ended_at, remains.size - remains.ended_at);
  }
  if (!remains.problems.empty()) text += "problems\n";
  for (const std::string& problem : remains.problems)
    text += fmt::format("  {}\n", host::without_controls(problem));
}

Json file_json(const FileRemains& remains) {
  Json entries = Json::array();
  for (const FileRemains::Entry& entry : remains.entries) {
    entries.push_back({{"offset", entry.offset},
                       {"region_set", entry.region_set < 0 ? Json(nullptr) : Json(entry.region_set)},
                       {"title", entry.title},
                       {"whole", entry.is_whole}});
  }
  return {{"file", remains.file},         {"size", remains.size},
          {"entries", entries},           {"complete", remains.is_complete},
          {"ended_at", remains.ended_at}, {"problems", remains.problems}};
}

}  // namespace

Remains find_remains(const std::string& file, const std::string& failed_file, const std::string& reason) {
  Remains remains{file, failed_file, reason, {}};
  for (const inspect::SeriesFile& other : inspect::find_series(file)) {
    stop_if_interrupted();
    FileRemains found = remains_of(other.path);
    if (found.has_errors) remains.files.push_back(std::move(found));
  }
  if (remains.files.empty()) remains.files.push_back(remains_of(file));
  // Of a single file that is none of ours the reason says all.
  if (remains.files.size() == 1 && remains.files.front().file == file && !remains.files.front().is_fld)
    remains.files.clear();
  return remains;
}

std::string refused_file(const std::string& file, const std::string& reason) {
  const std::vector<inspect::SeriesFile> series = inspect::find_series(file);
  std::string refused;
  for (const inspect::SeriesFile& other : series) {
    stop_if_interrupted();
    inspect::check_files({other.path}, {}, [&](const inspect::FileReport& report) {
      const bool has_errors = !report.reason.empty() || report.findings.count(inspect::Severity::error) > 0;
      if (has_errors && refused.empty()) refused = other.path;
    });
    if (!refused.empty()) return refused;
  }
  const bool lacks_geometry = reason.find("IN THE FIRST FLD FILE") != std::string::npos;
  return lacks_geometry && !series.empty() ? series.front().path : file;
}

std::string reason_with_files(const Remains& remains) {
  std::vector<std::string> broken;
  for (const FileRemains& file : remains.files) {
    if (file.has_errors) broken.push_back(file.file);
  }
  if (broken.empty() || broken == std::vector{remains.failed_file}) return remains.reason;
  constexpr std::size_t kMostNames = 3;
  const std::size_t shown = std::min(broken.size(), kMostNames);
  const std::string more = broken.size() > shown ? fmt::format(" and {} more", broken.size() - shown) : "";
  broken.resize(shown);
  return fmt::format("{} (with errors: {}{})", remains.reason, fmt::join(broken, ", "), more);
}

std::string remains_text(const Remains& remains) {
  std::string text = fmt::format("file         {}\nunreadable   {}\n", host::without_controls(remains.file),
                                 host::without_controls(remains.reason));
  for (const FileRemains& file : remains.files) add_text(file, text);
  return text;
}

std::string remains_json(const Remains& remains) {
  Json files = Json::array();
  for (const FileRemains& file : remains.files) files.push_back(file_json(file));
  return json_text({{"file", remains.file}, {"reason", remains.reason}, {"files", files}}) + "\n";
}

}  // namespace tool
