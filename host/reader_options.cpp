#include "host/reader_options.h"

#include <algorithm>
#include <cstring>

#include "host/text_rows.h"

namespace host {
namespace {

constexpr std::size_t kTitleLength = 41;
constexpr std::size_t kFieldLength = 80;
constexpr std::size_t kMaxItems = 20;  // of one pulldown

std::size_t count_of(int answer) {
  return static_cast<std::size_t>(std::max(answer, 0));
}

}  // namespace

void ReaderOptions::choose(const std::map<std::size_t, bool>& choices) {
  for (const auto& [number, is_on] : choices) {
    if (number < toggles.size()) toggles[number].is_on = is_on;
  }
}

ReaderOptions ask_options(GuardedReader& reader) {
  const EntryPoints& entry = reader.entry_points();
  ReaderOptions options;
  if (!entry.get_extra_gui_numbers || !entry.get_extra_gui_defaults) return options;

  int toggle_answer = 0;
  int pulldown_answer = 0;
  int field_answer = 0;
  reader.call(entry.get_extra_gui_numbers, &toggle_answer, &pulldown_answer, &field_answer);
  const std::size_t toggles = count_of(toggle_answer);
  const std::size_t pulldowns = count_of(pulldown_answer);
  const std::size_t fields = count_of(field_answer);

  TextRows toggle_titles(toggles, kTitleLength);
  TextRows pulldown_titles(pulldowns, kTitleLength);
  TextRows field_titles(fields, kTitleLength);
  TextRows field_texts(fields, kFieldLength);
  std::vector<int> toggle_defaults(toggles);
  std::vector<int> pulldown_counts(pulldowns);
  options.pulldown_choices.resize(pulldowns);
  std::vector<TextRows> items;
  std::vector<char**> item_rows;
  for (std::size_t i = 0; i < pulldowns; ++i) {
    items.emplace_back(kMaxItems, kTitleLength);
    item_rows.push_back(items.back().rows());
  }
  reader.call(entry.get_extra_gui_defaults, toggle_titles.rows(), toggle_defaults.data(),
              pulldown_titles.rows(), pulldown_counts.data(), options.pulldown_choices.data(),
              item_rows.data(), field_titles.rows(), field_texts.rows());
  for (std::size_t i = 0; i < toggles; ++i) {
    options.toggles.push_back({toggle_titles.text(i), toggle_defaults[i] != 0});
  }
  for (std::size_t i = 0; i < fields; ++i) options.field_texts.push_back(field_texts.text(i));
  return options;
}

void give_options(GuardedReader& reader, const ReaderOptions& options) {
  const auto& set_extra_gui_data = reader.entry_points().set_extra_gui_data;
  if (!set_extra_gui_data) return;
  std::vector<int> toggles;
  toggles.reserve(options.toggles.size());
  for (const Toggle& toggle : options.toggles) toggles.push_back(toggle.is_on ? 1 : 0);
  std::vector<int> pulldowns = options.pulldown_choices;
  TextRows fields(options.field_texts.size(), kFieldLength);
  for (std::size_t i = 0; i < options.field_texts.size(); ++i) {
    std::strncpy(fields.row(i), options.field_texts[i].c_str(), kFieldLength);
  }
  reader.call(set_extra_gui_data, toggles.data(), pulldowns.data(), fields.rows());
}

}  // namespace host
