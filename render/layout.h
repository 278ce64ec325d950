// Where the texts, the legend, the axes and the parts go in a picture.
#pragma once

namespace render {

// A rectangle in pixels from the picture's lower left corner.
struct Area {
  double left = 0;
  double bottom = 0;
  double width = 0;
  double height = 0;

  double right() const { return left + width; }
  double top() const { return bottom + height; }
};

// The areas lie inside the picture and none overlaps another.
struct Layout {
  bool is_annotated = true;  // false: too small for anything but the parts; the other areas are empty
  double title_size = 0;     // heights of letters, in pixels
  double label_size = 0;
  double margin = 0;
  Area title;   // at the top
  Area scene;   // in the middle, for the parts
  Area axes;    // a square at the lower left
  Area legend;  // at the bottom, with its labels and its title
};

// For a picture of `width` x `height` pixels whose title has so many lines. The lettering follows the shorter
// side.
Layout make_layout(int width, int height, int title_lines);

}  // namespace render
