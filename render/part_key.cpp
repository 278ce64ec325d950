#include "render/part_key.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "render/rectangles.h"

namespace render {
namespace {

constexpr double kLineHeight = 1.5;  // these are of the height of the letters
constexpr double kSwatchWidth = 1.4;
constexpr double kGap = 0.4;  // between a colour and its name
constexpr double kEntryGap = 1.2;
constexpr double kLongestName = 16;

}  // namespace

KeyLines arrange_key(const std::vector<double>& widths, double width, std::size_t most_lines, double more) {
  KeyLines key;
  double used = 0;
  for (std::size_t i = 0; i < widths.size(); ++i) {
    const bool starts_line = key.lines.empty() || used + widths[i] > width;
    const bool is_last_line = key.lines.size() + (starts_line ? 1 : 0) == most_lines;
    const double wanted = (starts_line ? 0 : used) + widths[i];
    // The last line keeps room for the note, unless all that is left fits too.
    const double rest =
        std::accumulate(widths.begin() + static_cast<std::ptrdiff_t>(i) + 1, widths.end(), 0.0);
    const bool ends_here = is_last_line && wanted + rest > width && wanted + more > width;
    if (key.lines.size() + (starts_line ? 1 : 0) > most_lines || ends_here) {
      key.left_out = widths.size() - i;
      return key;
    }
    if (starts_line) key.lines.emplace_back();
    key.lines.back().push_back(i);
    used = wanted;
  }
  return key;
}

void add_part_key(vtkRenderer* renderer, const std::vector<KeyEntry>& entries, const Layout& layout,
                  const TextStyle& style) {
  if (entries.empty()) return;
  const double size = layout.label_size;
  const Area& area = layout.legend;
  std::vector<FittedText> names;
  std::vector<double> widths;
  for (const KeyEntry& entry : entries) {
    names.push_back({fit_text(entry.name, style, size, kLongestName * size).text, size});
    widths.push_back((kSwatchWidth + kGap + kEntryGap) * size + text_width(names.back().text, style, size));
  }
  const auto note = [](std::size_t count) { return "and " + std::to_string(count) + " more"; };
  const auto most_lines =
      static_cast<std::size_t>(std::max(1.0, std::floor(area.height / (kLineHeight * size))));
  const KeyLines key =
      arrange_key(widths, area.width, most_lines, text_width(note(entries.size()), style, size));
  if (key.lines.empty()) return;  // not even one has room
  double y = area.top();
  double x = area.left;
  for (const std::vector<std::size_t>& line : key.lines) {
    y -= kLineHeight * size;
    x = area.left;
    for (const std::size_t i : line) {
      add_rectangles(renderer, {x, y, kSwatchWidth * size, 0.8 * size}, {entries[i].colour});
      add_text(renderer, names[i], style, {x + (kSwatchWidth + kGap) * size, y, Anchor::left});
      x += widths[i];
    }
  }
  if (key.left_out > 0) add_text(renderer, {note(key.left_out), size}, style, {x, y, Anchor::left});
}

}  // namespace render
