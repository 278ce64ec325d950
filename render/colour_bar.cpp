#include "render/colour_bar.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <string>
#include <vtkNew.h>
#include <vtkScalarBarActor.h>
#include <vtkTextActor.h>

#include "render/picture.h"

namespace render {
namespace {

constexpr double kLeft = 0.27;
constexpr double kWidth = 0.46;
constexpr double kBarBottom = 0.05;
constexpr double kBarHeight = 0.028;
constexpr int kTicks = 5;

bool is_dark(const Colour& colour) {
  return 0.3 * colour[0] + 0.59 * colour[1] + 0.11 * colour[2] < 0.45;
}

// A text with its middle `along` the bar, from 0 to 1, on the base line `height`.
void add_text(vtkRenderer* renderer, const SceneOptions& options, double size, const std::string& text,
              double along, double height) {
  vtkNew<vtkTextActor> actor;
  actor->SetInput(text.c_str());
  set_text(actor->GetTextProperty(), options, size);
  actor->GetTextProperty()->SetJustificationToCentered();
  actor->GetPositionCoordinate()->SetCoordinateSystemToNormalizedViewport();
  actor->GetPositionCoordinate()->SetValue(kLeft + along * kWidth, height);
  renderer->AddActor2D(actor);
}

}  // namespace

void set_text(vtkTextProperty* property, const SceneOptions& options, double size) {
  property->SetFontFamilyToArial();
  if (!options.font.empty()) {
    property->SetFontFamily(VTK_FONT_FILE);
    property->SetFontFile(options.font.c_str());
  }
  property->BoldOff();
  property->ItalicOff();
  property->ShadowOff();
  property->SetFontSize(static_cast<int>(std::lround(size * kFiner * options.height)));
  const double level = is_dark(options.background) ? 0.95 : 0.1;
  property->SetColor(level, level, level);
}

void add_colour_bar(vtkRenderer* renderer, vtkLookupTable* colours, const SceneOptions& options) {
  vtkNew<vtkScalarBarActor> bar;
  bar->SetLookupTable(colours);
  bar->SetOrientationToHorizontal();
  bar->SetMaximumNumberOfColors(static_cast<int>(colours->GetNumberOfTableValues()));
  bar->SetDrawTickLabels(false);
  bar->GetPositionCoordinate()->SetCoordinateSystemToNormalizedViewport();
  bar->GetPositionCoordinate()->SetValue(kLeft, kBarBottom);
  bar->SetWidth(kWidth);
  bar->SetHeight(kBarHeight);
  bar->SetBarRatio(1);
  renderer->AddActor2D(bar);

  const ColourScale& scale = *options.scale;
  add_text(renderer, options, kTitleSize, scale.title, 0.5, kBarBottom + kBarHeight + 0.012);
  for (int tick = 0; tick < kTicks; ++tick) {
    const double along = static_cast<double>(tick) / (kTicks - 1);
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.3g", scale.low + along * (scale.high - scale.low));
    add_text(renderer, options, kLabelSize, text.data(), along, kBarBottom - 0.03);
  }
}

}  // namespace render
