#include "fmt/format.h"
#include "inspect/layout.h"

namespace inspect {
namespace {

std::string number_or_blank(std::int64_t number) {
  return number < 0 ? "" : std::to_string(number);
}

std::string row(const LayoutEntry& entry, const std::string& what, const std::string& remark = "") {
  std::string line = fmt::format("{:>12}{:>12}  {:<44}{:>6}{:>12}  {}", entry.offset, entry.length, what,
                                 number_or_blank(entry.width), number_or_blank(entry.count), remark);
  line.erase(line.find_last_not_of(' ') + 1);
  return line + '\n';
}

std::string rule_row(const LayoutEntry& entry) {
  std::string what = "  " + entry.what;
  if (entry.region >= 0) what += fmt::format(" of region {}", entry.region);
  const Rule& rule = entry.rule;
  return row(
      entry, what,
      rule.n_records == 1 ? "1 record" : fmt::format("{} records of {}", rule.n_records, rule.per_record));
}

std::string value_of(const LayoutEntry& entry) {
  if (entry.number) return fmt::format("= {}", *entry.number);
  return entry.text ? fmt::format("= \"{}\"", *entry.text) : "";
}

}  // namespace

std::string layout_heading() {
  return fmt::format("{:>12}{:>12}  {:<44}{:>6}{:>12}\n", "offset", "length", "what", "width", "count");
}

std::string layout_line(const LayoutEntry& entry) {
  switch (entry.type) {
    case EntryType::identification:
      return row(entry, "identification");
    case EntryType::version:
      return row(entry, "version", value_of(entry));
    case EntryType::title:
      return row(entry, entry.what);
    case EntryType::rule:
      return rule_row(entry);
    case EntryType::record:
      return row(entry, "    record", value_of(entry));
    case EntryType::end_rule:
      return row(entry, "  end rule");
    case EntryType::skipped:
      return row(entry, "    skipped");
    case EntryType::problem:
      break;
  }
  const Finding& finding = *entry.finding;
  return fmt::format("{:>12}          !!  {} {}: wanted {}, found {}\n", finding.offset,
                     number_text(finding.kind), entry.what, finding.wanted, finding.found);
}

}  // namespace inspect
