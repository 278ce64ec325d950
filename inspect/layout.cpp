#include "inspect/layout.h"

#include <fnmatch.h>

#include "inspect/text_check.h"

namespace inspect {

Layout::Layout(const std::vector<std::string>& patterns, Decode decode, Use use)
    : decode_(std::move(decode)), use_(std::move(use)), is_picked_(patterns.empty()) {
  for (const std::string& pattern : patterns) patterns_.push_back({pattern});
}

bool Layout::picks(const std::string& title) {
  bool is_match = patterns_.empty();
  const std::string decoded = decode_(shown(title));
  for (Pattern& pattern : patterns_) {
    const auto matches = [&](const std::string& text) {
      return fnmatch(pattern.text.c_str(), text.c_str(), 0) == 0;
    };
    if (!matches(title) && !matches(decoded)) continue;
    pattern.is_matched = true;
    is_match = true;
  }
  return is_match;
}

std::vector<std::string> Layout::unmatched() const {
  std::vector<std::string> texts;
  for (const Pattern& pattern : patterns_) {
    if (!pattern.is_matched) texts.push_back(pattern.text);
  }
  return texts;
}

void Layout::identification(const Record& record) {
  tell({.type = EntryType::identification, .offset = record.offset, .length = record.size()});
}

void Layout::version(const Record& record, std::int32_t version) {
  tell({.type = EntryType::version, .offset = record.offset, .length = record.size(), .number = version});
}

void Layout::title(const Title& title) {
  is_picked_ = picks(title.text);
  tell({.type = EntryType::title,
        .offset = title.record.offset,
        .length = title.record.size(),
        .what = shown(title.text),
        .region_set = title.is(TitleId::file_end) ? -1 : title.region_set});
}

void Layout::end_section(const Title& /*title*/, const Record& rule) {
  if (rule.length == 0) return;
  tell({.type = EntryType::end_rule, .offset = rule.offset, .length = rule.size()});
}

void Layout::begin_block(const Block& block) {
  tell({.type = EntryType::rule,
        .offset = block.record.offset,
        .length = block.record.size(),
        .what = std::string(name(block.content)),
        .region = block.region,
        .rule = block.rule,
        .width = block.width,
        .count = block.count});
}

void Layout::record(const Block& block, const Record& record, std::int64_t count) {
  flush();
  record_ = {.type = EntryType::record,
             .offset = record.offset,
             .length = record.size(),
             .width = block.width,
             .count = count};
}

void Layout::integer(const Block& /*block*/, std::int64_t value) {
  if (record_) record_->number = value;
}

void Layout::characters(const Block& block, std::string_view bytes) {
  if (record_ && block.content != Content::region_names) record_->text = shown(without_padding(bytes));
}

void Layout::skipped(const Record& record) {
  tell({.type = EntryType::skipped, .offset = record.offset, .length = record.size()});
}

void Layout::problem(const Finding& finding) {
  const KindInfo& kind = info(finding.kind);
  if (kind.severity == Severity::note) return;
  if (kind.severity == Severity::error) ++errors_;
  flush();
  use_({.type = EntryType::problem,
        .offset = finding.offset,
        .what = std::string(kind.text),
        .finding = finding});
}

void Layout::tell(const LayoutEntry& entry) {
  flush();
  if (is_picked_) use_(entry);
}

void Layout::flush() {
  if (record_ && is_picked_) use_(*record_);
  record_.reset();
}

}  // namespace inspect
