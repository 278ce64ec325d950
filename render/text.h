// Texts in pictures.
#pragma once

#include <string>
#include <vtkRenderer.h>
#include <vtkTextProperty.h>

#include "render/colour_map.h"

namespace render {

struct TextStyle {
  std::string font;  // file of a font; empty: VTK's own
  Colour colour = {0, 0, 0};
};

// Dark or light, whichever is legible on the background.
Colour text_colour(const Colour& background);

// Upright text of this height of letters, in pixels of the picture.
void set_text(vtkTextProperty* property, const TextStyle& style, double size);

// The width of a text, the widest of its lines, in pixels of the picture.
double text_width(const std::string& text, const TextStyle& style, double size);

struct FittedText {
  std::string text;
  double size = 0;  // of its letters
};

// The text in smaller letters, or with "..." in place of the ends of its lines where the smallest legible
// ones are still too wide.
FittedText fit_text(const std::string& text, const TextStyle& style, double size, double width);

enum class Anchor { left, centre };

// Adds a text at a place in pixels of the picture: that of its left end or middle, and of its top if it hangs
// from it, or else of its base line.
struct TextPlace {
  double x = 0;
  double y = 0;
  Anchor anchor = Anchor::left;
  bool hangs = false;
};
void add_text(vtkRenderer* renderer, const FittedText& text, const TextStyle& style, const TextPlace& place);

}  // namespace render
