// The key of a picture in which each part has a colour of its own.
#pragma once

#include <string>
#include <vector>
#include <vtkRenderer.h>

#include "render/colour_map.h"
#include "render/layout.h"
#include "render/text.h"

namespace render {

struct KeyEntry {
  std::string name;  // UTF-8
  Colour colour{};
};

// The entries of a key in lines, and how many more there are.
struct KeyLines {
  std::vector<std::vector<std::size_t>> lines;  // numbers of entries
  std::size_t left_out = 0;
};

// As many entries as have room in lines of this width, given the width that each takes; `more` is that of a
// note at the end, for which there is room when something is left out.
KeyLines arrange_key(const std::vector<double>& widths, double width, std::size_t most_lines, double more);

// At the place of the legend, colours and names of the parts, as far as there is room.
void add_part_key(vtkRenderer* renderer, const std::vector<KeyEntry>& entries, const Layout& layout,
                  const TextStyle& style);

}  // namespace render
