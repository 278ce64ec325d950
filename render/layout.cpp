#include "render/layout.h"

#include <algorithm>

namespace render {
namespace {

constexpr int kSmallestAnnotated = 120;  // pixels
constexpr double kUsedWidth = 0.92;      // by the parts

// At most a third of the height.
double title_height(const Layout& layout, int height, int lines) {
  constexpr double kLineHeight = 1.3;
  return std::min(height / 3.0, lines * kLineHeight * layout.title_size);
}

Area make_legend(const Layout& layout, int width, double unit) {
  constexpr double kUsualWidth = 0.54;    // of the picture
  constexpr double kLargestWidth = 3;     // of `unit`
  constexpr double kSmallestWidth = 0.5;  // of the picture, to be in its middle
  Area legend;
  legend.bottom = layout.margin / 2;
  // Labels, colours and title, each with the room above it.
  legend.height = 1.5 * layout.label_size + std::max(6.0, 0.03 * unit) + 1.7 * layout.title_size;
  const double usual = std::min(kUsualWidth * width, kLargestWidth * unit);
  const double left = layout.axes.right() + layout.margin;
  legend.width = std::min(usual, width - 2 * left);
  legend.left = (width - legend.width) / 2;
  if (legend.width < std::min(usual, kSmallestWidth * width)) {
    legend.left = left;
    legend.width = width - left - layout.margin;
  }
  return legend;
}

}  // namespace

Layout make_layout(int width, int height, int title_lines) {
  constexpr double kUsualAspect = 0.75;
  const double unit = std::min(static_cast<double>(height), kUsualAspect * width);
  Layout layout;
  layout.is_annotated = std::min(width, height) >= kSmallestAnnotated;
  layout.margin = 0.02 * unit;
  double bottom = 2 * layout.margin;
  double top = height - 2 * layout.margin;
  if (layout.is_annotated) {
    layout.title_size = std::max(9.0, 0.026 * unit);
    layout.label_size = std::max(8.0, 0.022 * unit);
    const double side = std::max(36.0, 0.155 * unit);
    layout.axes = {layout.margin / 2, layout.margin / 2, side, side};
    layout.legend = make_legend(layout, width, unit);
    const double text_height = title_height(layout, height, title_lines);
    layout.title = {layout.margin, height - layout.margin - text_height, width - 2 * layout.margin,
                    text_height};
    bottom = std::max(layout.axes.top(), layout.legend.top()) + layout.margin / 2;
    top = layout.title.bottom - (title_lines > 0 ? layout.margin : 0);
  }
  const double side_margin = (1 - kUsedWidth) / 2 * width;
  layout.scene = {side_margin, bottom, kUsedWidth * width, top - bottom};
  return layout;
}

}  // namespace render
