// What a picture shows: the outer faces of parts, coloured by a scalar, with a colour bar, a title and axes.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>
#include <vtkDataArray.h>
#include <vtkPolyData.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>

#include "render/colour_map.h"
#include "render/view.h"

namespace render {

// A part to be shown: its outer faces, with the scalars for its colours if it has any.
struct ShownPart {
  vtkSmartPointer<vtkPolyData> faces;
  bool is_faint = false;  // grey and translucent
};

// The outer faces of a grid. `scalars`, of one component, may be null; there is one per cell or one per
// point.
vtkSmartPointer<vtkPolyData> outer_faces(vtkUnstructuredGrid* grid, vtkDataArray* scalars, bool per_cell);

struct ColourScale {
  std::string map;  // one of colour_map_names()
  double low = 0;
  double high = 1;
  std::string title;  // UTF-8
};

struct SceneOptions {
  int width = 1200;  // of the picture, in pixels
  int height = 900;
  Colour background = {1, 1, 1};
  View view = parse_view("iso");
  bool mesh_edges = false;           // draw the elements' edges
  std::optional<ColourScale> scale;  // none: each part has a colour of its own
  std::string title;                 // UTF-8; may be empty
  std::string font;                  // file of the font for the texts; empty: VTK's own
};

// Draws pictures of one size, one after the other, in a window of its own.
class Studio {
 public:
  // Throws std::runtime_error when there is no way to draw on this machine.
  Studio(int width, int height);
  Studio(const Studio&) = delete;
  Studio& operator=(const Studio&) = delete;
  ~Studio();

  // The picture as the bytes of a PNG file. `options` have the size of the studio.
  std::string draw(const std::vector<ShownPart>& parts, const SceneOptions& options);

 private:
  struct Window;
  std::unique_ptr<Window> window_;
};

}  // namespace render
