#include "inspect/layout.h"
#include "inspect/report.h"
#include "nlohmann/json.hpp"

namespace inspect {
namespace {

const char* type_name(EntryType type) {
  switch (type) {
    case EntryType::identification:
      return "identification";
    case EntryType::version:
      return "version";
    case EntryType::title:
      return "title";
    case EntryType::rule:
      return "rule";
    case EntryType::record:
      return "record";
    case EntryType::end_rule:
      return "end_rule";
    case EntryType::skipped:
      return "skipped";
    case EntryType::problem:
      break;
  }
  return "problem";
}

}  // namespace

nlohmann::ordered_json layout_json(const LayoutEntry& entry, const Decode& decode) {
  nlohmann::ordered_json json{{"type", type_name(entry.type)}};
  if (entry.finding) {
    json.update(finding_json(*entry.finding, decode));
    return json;
  }
  json["offset"] = entry.offset;
  json["length"] = entry.length;
  if (entry.type == EntryType::title) {
    json["title"] = decode(entry.what);
    if (entry.region_set >= 0) json["region_set"] = entry.region_set;
  }
  if (entry.type == EntryType::rule) {
    json["what"] = entry.what;
    if (entry.region >= 0) json["region"] = entry.region;
    json["width"] = entry.rule.width;
    json["per_record"] = entry.rule.per_record;
    json["records"] = entry.rule.n_records;
  } else if (entry.width >= 0) {
    json["width"] = entry.width;
  }
  if (entry.count >= 0) json["count"] = entry.count;
  if (entry.number) json["value"] = *entry.number;
  if (entry.text) json["value"] = decode(*entry.text);
  return json;
}

}  // namespace inspect
