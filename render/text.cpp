#include "render/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <sstream>
#include <vtkNew.h>
#include <vtkTextActor.h>
#include <vtkTextRenderer.h>

#include "render/picture.h"

namespace render {
namespace {

constexpr int kDotsPerInch = 72;  // of VTK's windows, so that sizes in points are sizes in pixels
constexpr double kSmallestLetters = 8;

std::size_t character_length(char first) {
  const auto byte = static_cast<unsigned char>(first);
  return byte < 0x80 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

// The longest beginning of a line that is narrow enough with the dots behind it.
std::string shortened(const std::string& line, const TextStyle& style, double size, double width) {
  if (text_width(line, style, size) <= width) return line;
  constexpr char kDots[] = "...";
  std::string kept;
  for (std::size_t at = 0; at < line.size(); at += character_length(line[at])) {
    const std::string longer = line.substr(0, at + character_length(line[at]));
    if (text_width(longer + kDots, style, size) > width) break;
    kept = longer;
  }
  return kept + kDots;
}

}  // namespace

Colour text_colour(const Colour& background) {
  const double brightness = 0.3 * background[0] + 0.59 * background[1] + 0.11 * background[2];
  const double level = brightness < 0.45 ? 0.95 : 0.1;
  return {level, level, level};
}

void set_text(vtkTextProperty* property, const TextStyle& style, double size) {
  property->SetFontFamilyToArial();
  if (!style.font.empty()) {
    property->SetFontFamily(VTK_FONT_FILE);
    property->SetFontFile(style.font.c_str());
  }
  property->BoldOff();
  property->ItalicOff();
  property->ShadowOff();
  property->SetFontSize(static_cast<int>(std::lround(size * kSupersampling)));
  property->SetColor(style.colour[0], style.colour[1], style.colour[2]);
}

double text_width(const std::string& text, const TextStyle& style, double size) {
  if (text.empty()) return 0;
  vtkNew<vtkTextProperty> property;
  set_text(property, style, size);
  std::array<int, 4> box{};
  vtkTextRenderer::GetInstance()->GetBoundingBox(property, text, box.data(), kDotsPerInch);
  return static_cast<double>(box[1] - box[0] + 1) / kSupersampling;
}

FittedText fit_text(const std::string& text, const TextStyle& style, double size, double width) {
  const double found = text_width(text, style, size);
  if (found <= width) return {text, size};
  const double smallest = std::max(kSmallestLetters, 0.7 * size);
  const double fitting = size * width / found;
  // Sizes are rounded to whole pixels of the window.
  for (double smaller = fitting; smaller >= smallest; smaller -= 0.5) {
    if (text_width(text, style, smaller) <= width) return {text, smaller};
  }
  FittedText fitted{{}, std::min(size, smallest)};
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (!fitted.text.empty()) fitted.text += '\n';
    fitted.text += shortened(line, style, fitted.size, width);
  }
  return fitted;
}

void add_text(vtkRenderer* renderer, const FittedText& text, const TextStyle& style, const TextPlace& place) {
  vtkNew<vtkTextActor> actor;
  actor->SetInput(text.text.c_str());
  set_text(actor->GetTextProperty(), style, text.size);
  if (place.anchor == Anchor::centre) actor->GetTextProperty()->SetJustificationToCentered();
  if (place.hangs) actor->GetTextProperty()->SetVerticalJustificationToTop();
  actor->GetPositionCoordinate()->SetCoordinateSystemToDisplay();
  actor->GetPositionCoordinate()->SetValue(kSupersampling * place.x, kSupersampling * place.y);
  renderer->AddActor2D(actor);
}

}  // namespace render
