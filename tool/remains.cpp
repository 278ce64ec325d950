#include "tool/remains.h"

#include "fmt/format.h"
#include "host/text_encoding.h"
#include "inspect/byte_source.h"
#include "inspect/check.h"
#include "inspect/report.h"
#include "inspect/visitor.h"
#include "tool/json_values.h"

namespace tool {
namespace {

constexpr std::size_t kMostProblems = 20;

class Collector : public inspect::Visitor {
 public:
  explicit Collector(Remains& remains) : remains_(remains) {}

  void title(const inspect::Title& title) override {
    const bool has_body = title.info != nullptr && title.info->read != nullptr;
    remains_.entries.push_back({title.record.offset, title.region_set, host::to_utf8(title.text),
                                title.info != nullptr && !has_body});
  }

  void end_section(const inspect::Title& /*title*/, const inspect::Record& rule) override {
    if (rule.length > 0 && !remains_.entries.empty()) remains_.entries.back().is_whole = true;
  }

 private:
  Remains& remains_;
};

}  // namespace

std::optional<Remains> find_remains(const std::string& file) {
  try {
    Remains remains;
    inspect::FileSource source(file);
    Collector collector(remains);
    remains.size = source.size();
    remains.walk = inspect::walk(source, collector);
    if (remains.walk.end == inspect::WalkEnd::not_fld) return std::nullopt;
    inspect::check_files({file}, {}, [&](const inspect::FileReport& report) {
      for (const inspect::Finding& finding : report.findings.kept()) {
        if (inspect::info(finding.kind).severity == inspect::Severity::note) continue;
        if (remains.problems.size() < kMostProblems)
          remains.problems.push_back(host::to_utf8(inspect::finding_text(finding)));
      }
    });
    return remains;
  } catch (const inspect::ReadError&) {
    return std::nullopt;
  }
}

std::string remains_text(const std::string& file, const std::string& reason, const Remains& remains) {
  std::string text = fmt::format("file         {}\nsize         {} bytes\nunreadable   {}\n",
                                 host::without_controls(file), remains.size, host::without_controls(reason));
  text += fmt::format("\nwhat is there\n  {:>10}  {:>3}  title\n", "offset", "set");
  for (const Remains::Entry& entry : remains.entries) {
    text += fmt::format("  {:>10}  {:>3}  {}{}\n", entry.offset,
                        entry.region_set < 0 ? "-" : std::to_string(entry.region_set),
                        host::without_controls(entry.title), entry.is_whole ? "" : "  (not whole)");
  }
  text += remains.walk.end == inspect::WalkEnd::complete
              ? fmt::format("  {:>10}       end of the file\n", remains.walk.offset)
              : fmt::format("  {:>10}       stopped here, {} bytes before the end of the file\n",
                            remains.walk.offset, remains.size - remains.walk.offset);
  if (!remains.problems.empty()) text += "\nproblems\n";
  for (const std::string& problem : remains.problems) text += fmt::format("  {}\n", problem);
  return text;
}

std::string remains_json(const std::string& file, const std::string& reason, const Remains& remains) {
  Json entries = Json::array();
  for (const Remains::Entry& entry : remains.entries) {
    entries.push_back({{"offset", entry.offset},
                       {"region_set", entry.region_set < 0 ? Json(nullptr) : Json(entry.region_set)},
                       {"title", entry.title},
                       {"whole", entry.is_whole}});
  }
  const Json json{{"file", file},
                  {"reason", reason},
                  {"size", remains.size},
                  {"entries", entries},
                  {"complete", remains.walk.end == inspect::WalkEnd::complete},
                  {"ended_at", remains.walk.offset},
                  {"problems", remains.problems}};
  return json_text(json) + "\n";
}

}  // namespace tool
