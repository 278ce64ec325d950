#include "render/legend.h"

#include <algorithm>
#include <array>
#include <vector>

#include "render/rectangles.h"
#include "render/ticks.h"

namespace render {
namespace {

constexpr int kMostTicks = 7;

std::vector<Colour> colours_of(vtkLookupTable* table) {
  std::vector<Colour> colours;
  for (vtkIdType i = 0; i < table->GetNumberOfTableValues(); ++i) {
    std::array<double, 4> colour{};
    table->GetTableValue(i, colour.data());
    colours.push_back({colour[0], colour[1], colour[2]});
  }
  return colours;
}

class Legend {
 public:
  Legend(vtkRenderer* renderer, const Layout& layout, const TextStyle& style)
      : renderer_(renderer), layout_(layout), style_(style), bar_(layout.legend) {
    bar_.bottom += 1.5 * layout.label_size;
    bar_.height -= 1.5 * layout.label_size + 1.7 * layout.title_size;
  }

  void add_undefined() {
    constexpr char kText[] = "undefined";
    const double width = std::max(width_of(kText), 1.5 * bar_.height);
    const double room = width + 1.5 * layout_.label_size;
    if (room > bar_.width / 3) return;
    bar_.width -= room;
    const double middle = layout_.legend.right() - width / 2;
    const Area swatch = {middle - 0.75 * bar_.height, bar_.bottom, 1.5 * bar_.height, bar_.height};
    add_rectangles(renderer_, swatch, {kUndefinedColour});
    add_label(kText, middle);
  }

  void add_bar(vtkLookupTable* colours) {
    const double low = colours->GetRange()[0];
    const double high = colours->GetRange()[1];
    const std::vector<Tick> ticks = fitting_ticks(low, high);
    const double overhang = half_width(ticks);
    bar_.left += overhang;
    bar_.width -= 2 * overhang;
    add_rectangles(renderer_, bar_, colours_of(colours));
    for (const Tick& tick : ticks) {
      const double x = bar_.left + bar_.width * std::clamp((tick.value - low) / (high - low), 0.0, 1.0);
      const double length = 0.3 * layout_.label_size;
      add_rectangles(renderer_, {x - 0.5, bar_.bottom - length, 1, length}, {style_.colour});
      add_label(tick.label, x);
    }
  }

  // Above the bar, and within the legend.
  void add_title(const std::string& title) {
    const FittedText fitted = fit_text(title, style_, layout_.title_size, layout_.legend.width);
    const double half = text_width(fitted.text, style_, fitted.size) / 2;
    const double x = std::clamp(bar_.left + bar_.width / 2, layout_.legend.left + half,
                                std::max(layout_.legend.left + half, layout_.legend.right() - half));
    add_text(renderer_, fitted, style_, {x, bar_.top() + 0.5 * layout_.title_size, Anchor::centre});
  }

 private:
  double width_of(const std::string& label) const { return text_width(label, style_, layout_.label_size); }

  double half_width(const std::vector<Tick>& ticks) const {
    double widest = 0;
    for (const Tick& tick : ticks) widest = std::max(widest, width_of(tick.label));
    return widest / 2;
  }

  // As many as have room beside each other.
  std::vector<Tick> fitting_ticks(double low, double high) const {
    constexpr double kGap = 1.5;  // of the height of the letters
    for (int most = kMostTicks; most > 2; --most) {
      std::vector<Tick> ticks = make_ticks(low, high, most);
      const double half = half_width(ticks);
      const double distance = (ticks[1].value - ticks[0].value) / (high - low) * (bar_.width - 2 * half);
      if (distance >= 2 * half + kGap * layout_.label_size) return ticks;
    }
    return make_ticks(low, high, 2);
  }

  void add_label(const std::string& text, double x) {
    add_text(renderer_, {text, layout_.label_size}, style_,
             {x, bar_.bottom - 0.5 * layout_.label_size, Anchor::centre, true});
  }

  vtkRenderer* renderer_;
  const Layout& layout_;
  const TextStyle& style_;
  Area bar_;
};

}  // namespace

void add_legend(vtkRenderer* renderer, vtkLookupTable* colours, const std::string& title, bool has_undefined,
                const Layout& layout, const TextStyle& style) {
  Legend legend(renderer, layout, style);
  if (has_undefined) legend.add_undefined();
  legend.add_bar(colours);
  legend.add_title(title);
}

void add_note(vtkRenderer* renderer, const std::string& text, const Layout& layout, const TextStyle& style) {
  const Area& area = layout.legend;
  add_text(renderer, fit_text(text, style, layout.title_size, area.width), style,
           {area.left + area.width / 2, area.bottom + area.height / 2, Anchor::centre});
}

}  // namespace render
