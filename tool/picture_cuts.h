// What a picture shows inside the volumes: cuts and streamlines, as faces to draw, and where arrows are.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>
#include <vtkDataArray.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>

#include "host/session.h"
#include "render/scene.h"
#include "tool/chosen_parts.h"
#include "tool/picture_scalar.h"
#include "tool/render_options.h"

namespace tool {

struct CutChoice {
  struct Plane {
    std::string text;  // as on the command line
    analysis::CutPlane plane;
  };
  struct Isosurface {
    std::string text;
    PictureScalar scalar;
    double value = 0;
  };
  struct Streamlines {
    std::string text;
    analysis::Seeds seeds;
  };

  ChosenParts volumes;  // that are cut
  std::vector<Plane> planes;
  std::vector<Isosurface> isosurfaces;
  std::vector<Streamlines> streamlines;
  int seeds = 0;                   // per line or sphere
  std::optional<Quantity> flow;    // the vector that streamlines follow
  std::optional<Quantity> arrows;  // the vector that arrows show
};

// What the command line chooses at the session's step. Throws CommandError (wrong usage) for what there is
// not, and (failure) when there is no volume to cut.
CutChoice choose_cuts(host::Session& session, const RenderOptions& options);

// The values that colour a part; null when there are none.
using ColoursOf = std::function<vtkSmartPointer<vtkDataArray>(int part)>;

struct MadeCut {
  std::string text;  // the option and its value
  render::ShownPart shown;
};

// All cuts at the session's step, with the colours as scalars, per cell or per point, unless `colours` is
// empty. Streamlines are tubes of the radius. Those that meet nothing have no faces.
std::vector<MadeCut> make_cuts(PictureValues& values, const CutChoice& choice, const ColoursOf& colours,
                               bool per_cell, double tube_radius);

}  // namespace tool
