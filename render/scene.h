// Pictures of parts: their outer faces, coloured by a scalar, with a legend, a title and axes.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>
#include <vtkPolyData.h>
#include <vtkSmartPointer.h>

#include "render/camera.h"
#include "render/colour_map.h"
#include "render/faces.h"
#include "render/view.h"

namespace render {

// A part to be shown. Its faces (outer_faces) have scalars if they are to be coloured by values.
struct ShownPart {
  vtkSmartPointer<vtkPolyData> faces;
  bool is_faint = false;  // grey and translucent
  bool is_mesh = true;    // whether its borders and edges are drawn
  bool is_ink = false;    // dark, whatever its scalars are
  std::string name{};     // UTF-8; for the key, where each part has a colour of its own; empty: not in it
};

struct ColourScale {
  std::string map;  // one of colour_map_names()
  double low = 0;
  double high = 1;
  std::string title;  // UTF-8
  std::string note;   // UTF-8; in place of the legend when no value is drawn; may be empty
};

struct SceneOptions {
  int width = 1200;  // of the picture, in pixels
  int height = 900;
  Colour background = {1, 1, 1};
  View view = parse_view("iso");
  std::optional<Extent> extent;      // what the picture has room for; none: the parts
  double zoom = 1;                   // how many times larger than what fits
  bool is_cropped = false;           // whether parts reach beyond the room for them, and are cut off there
  bool mesh_edges = false;           // draw the elements' edges
  std::optional<ColourScale> scale;  // none: each part has a colour of its own
  std::array<std::string, 3> axes = {"x", "y", "z"};
  std::string title;  // UTF-8; may be empty
  std::string font;   // file of the font for all texts; empty: VTK's own
};

// Draws pictures of one size, one after the other, off screen.
class SceneRenderer {
 public:
  // Throws std::runtime_error when this machine cannot render.
  SceneRenderer(int width, int height);
  SceneRenderer(const SceneRenderer&) = delete;
  SceneRenderer& operator=(const SceneRenderer&) = delete;
  ~SceneRenderer();

  // The picture as the bytes of a PNG file. `options` have the size that the constructor was given.
  //
  // Faces are shaded by their angle to the view: those with values lose at most kLargestShade of the
  // brightness of their colours. Where faces coincide, those with values cover those without, and parts cover
  // the parts behind them in the list.
  std::string draw(const std::vector<ShownPart>& parts, const SceneOptions& options);

 private:
  struct Window;
  std::unique_ptr<Window> window_;
};

inline constexpr double kLargestShade = 0.2;

}  // namespace render
