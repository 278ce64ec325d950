#include "render/colour_map.h"

#include <charconv>
#include <cmath>
#include <stdexcept>
#include <vtkColorTransferFunction.h>
#include <vtkNew.h>

namespace render {
namespace {

constexpr int kColours = 256;

struct ColourMap {
  std::string name;
  std::vector<std::string> colours;  // evenly spaced
};

// viridis and inferno are perceptually uniform, also in greyscale; cool-warm is diverging.
const std::vector<ColourMap>& colour_maps() {
  static const std::vector<ColourMap> kMaps = {
      {"viridis",
       {"#440154", "#472d7b", "#3b528b", "#2c728e", "#21918c", "#28ae80", "#5ec962", "#addc30", "#fde725"}},
      {"inferno",
       {"#000004", "#1b0c41", "#4a0c6b", "#781c6d", "#a52c60", "#cf4446", "#ed6925", "#fb9b06", "#f7d13d",
        "#fcffa4"}},
      {"cool-warm",
       {"#3b4cc0", "#6788ee", "#9abbff", "#c9d7f0", "#dddddd", "#edd1c2", "#f7a889", "#e26952", "#b40426"}},
      {"turbo",
       {"#30123b", "#4145ab", "#4675ed", "#39a2fc", "#1bcfd4", "#24eca6", "#61fc6c", "#a4fc3b", "#d1e834",
        "#f3c63a", "#fe9b2d", "#f36315", "#d93806", "#b11901", "#7a0402"}},
      {"grey", {"#202020", "#f0f0f0"}},
  };
  return kMaps;
}

}  // namespace

Colour parse_colour(std::string_view text) {
  if (text == "black") return {0, 0, 0};
  if (text == "grey") return {0.5, 0.5, 0.5};
  if (text == "white") return {1, 1, 1};
  unsigned value = 0;
  constexpr std::size_t kLength = 7;
  if (text.size() != kLength || text.front() != '#') throw std::invalid_argument("not a colour");
  const auto parsed = std::from_chars(text.data() + 1, text.data() + kLength, value, 16);
  if (parsed.ec != std::errc() || parsed.ptr != text.data() + kLength)
    throw std::invalid_argument("not a colour");
  const auto part = [value](unsigned shift) { return static_cast<double>(value >> shift & 0xFFU) / 255.0; };
  return {part(16), part(8), part(0)};
}

const std::vector<std::string>& colour_map_names() {
  static const std::vector<std::string> kNames = [] {
    std::vector<std::string> names;
    for (const ColourMap& map : colour_maps()) names.push_back(map.name);
    return names;
  }();
  return kNames;
}

vtkSmartPointer<vtkLookupTable> make_colour_map(std::string_view name, double low, double high) {
  const ColourMap* chosen = &colour_maps().front();
  for (const ColourMap& map : colour_maps()) {
    if (map.name == name) chosen = &map;
  }
  vtkNew<vtkColorTransferFunction> gradient;
  const auto last = static_cast<double>(chosen->colours.size() - 1);
  for (std::size_t i = 0; i < chosen->colours.size(); ++i) {
    const Colour colour = parse_colour(chosen->colours[i]);
    gradient->AddRGBPoint(static_cast<double>(i) / last, colour[0], colour[1], colour[2]);
  }
  auto table = vtkSmartPointer<vtkLookupTable>::New();
  table->SetNumberOfTableValues(kColours);
  for (int i = 0; i < kColours; ++i) {
    Colour colour{};
    gradient->GetColor(static_cast<double>(i) / (kColours - 1), colour.data());
    table->SetTableValue(i, colour[0], colour[1], colour[2]);
  }
  table->SetRange(low, high);
  table->SetNanColor(kUndefinedColour[0], kUndefinedColour[1], kUndefinedColour[2], 1.0);
  return table;
}

}  // namespace render
