#include "render/scene.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vtkActor.h>
#include <vtkAxesActor.h>
#include <vtkCamera.h>
#include <vtkCaptionActor2D.h>
#include <vtkCellData.h>
#include <vtkFeatureEdges.h>
#include <vtkGeometryFilter.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPolyDataMapper.h>
#include <vtkPolyDataNormals.h>
#include <vtkProperty.h>
#include <vtkRenderWindow.h>
#include <vtkRenderer.h>
#include <vtkTextActor.h>
#include <vtkTextProperty.h>

#include "render/colour_bar.h"
#include "render/offscreen_window.h"
#include "render/picture.h"

namespace render {
namespace {

constexpr Colour kFaint = {0.45, 0.5, 0.55};
constexpr double kFaintOpacity = 0.16;
constexpr double kSharp = 35;  // degrees between faces with an edge to be seen
// Of parts without a scalar, in turn.
constexpr std::array<Colour, 8> kPartColours = {{{0.60, 0.70, 0.80},
                                                 {0.85, 0.68, 0.50},
                                                 {0.62, 0.75, 0.58},
                                                 {0.80, 0.60, 0.62},
                                                 {0.70, 0.64, 0.80},
                                                 {0.82, 0.80, 0.55},
                                                 {0.55, 0.76, 0.76},
                                                 {0.76, 0.76, 0.76}}};

// A face that looks into the eye has the very colour of the map.
void set_surface_light(vtkProperty* property) {
  property->SetAmbient(0.5);
  property->SetDiffuse(0.5);
  property->SetSpecular(0);
}

// With normals that make curved surfaces look round and leave sharp edges sharp.
vtkSmartPointer<vtkPolyData> smooth(vtkPolyData* faces) {
  vtkNew<vtkPolyDataNormals> normals;
  normals->SetInputData(faces);
  normals->SetFeatureAngle(kSharp);
  normals->ConsistencyOff();
  normals->Update();
  return normals->GetOutput();
}

void add_faces(vtkRenderer* renderer, const ShownPart& part, vtkLookupTable* colours,
               const Colour& own_colour, bool mesh_edges) {
  vtkNew<vtkPolyDataMapper> mapper;
  mapper->SetInputData(smooth(part.faces));
  vtkNew<vtkActor> actor;
  actor->SetMapper(mapper);
  vtkProperty* property = actor->GetProperty();
  set_surface_light(property);
  const bool has_scalars = part.faces->GetPointData()->GetScalars() != nullptr ||
                           part.faces->GetCellData()->GetScalars() != nullptr;
  if (colours != nullptr && has_scalars && !part.is_faint) {
    mapper->SetLookupTable(colours);
    mapper->UseLookupTableScalarRangeOn();
    mapper->InterpolateScalarsBeforeMappingOn();
  } else {
    mapper->ScalarVisibilityOff();
    const Colour& colour = part.is_faint ? kFaint : colours != nullptr ? kUndefinedColour : own_colour;
    property->SetColor(colour[0], colour[1], colour[2]);
  }
  if (part.is_faint) property->SetOpacity(kFaintOpacity);
  if (mesh_edges && !part.is_faint) {
    property->EdgeVisibilityOn();
    property->SetEdgeColor(0.15, 0.15, 0.15);
    property->SetLineWidth(static_cast<float>(kFiner) * 0.6F);
  }
  renderer->AddActor(actor);
}

// The rims of a part and its sharp edges as thin lines.
void add_outline(vtkRenderer* renderer, const ShownPart& part) {
  vtkNew<vtkFeatureEdges> edges;
  edges->SetInputData(part.faces);
  edges->SetFeatureAngle(kSharp);
  edges->ColoringOff();
  edges->ManifoldEdgesOff();
  edges->NonManifoldEdgesOff();
  edges->Update();
  vtkNew<vtkPolyDataMapper> mapper;
  mapper->SetInputData(edges->GetOutput());
  mapper->ScalarVisibilityOff();
  mapper->SetResolveCoincidentTopologyToPolygonOffset();
  mapper->SetRelativeCoincidentTopologyLineOffsetParameters(0, -2);
  vtkNew<vtkActor> actor;
  actor->SetMapper(mapper);
  actor->GetProperty()->SetColor(0.12, 0.14, 0.18);
  actor->GetProperty()->SetLighting(false);
  actor->GetProperty()->SetLineWidth(static_cast<float>(kFiner) * 0.8F);
  actor->GetProperty()->SetOpacity(part.is_faint ? 0.5 : 1.0);
  renderer->AddActor(actor);
}

void add_title(vtkRenderer* renderer, const SceneOptions& options) {
  if (options.title.empty()) return;
  vtkNew<vtkTextActor> text;
  text->SetInput(options.title.c_str());
  set_text(text->GetTextProperty(), options, kTitleSize);
  text->GetTextProperty()->SetVerticalJustificationToTop();
  text->GetPositionCoordinate()->SetCoordinateSystemToNormalizedViewport();
  text->GetPositionCoordinate()->SetValue(0.02, 0.975);
  renderer->AddActor2D(text);
}

void look(vtkRenderer* renderer, const View& view) {
  vtkCamera* camera = renderer->GetActiveCamera();
  camera->SetFocalPoint(0, 0, 0);
  camera->SetPosition(view.from[0], view.from[1], view.from[2]);
  camera->SetViewUp(view.up[0], view.up[1], view.up[2]);
  camera->ParallelProjectionOn();
  renderer->ResetCamera();
}

// Scales the parallel projection so that the visible box just fits into the picture's middle, clear of title
// and bar.
void fit(vtkRenderer* renderer, const SceneOptions& options) {
  std::array<double, 6> box{};
  renderer->ComputeVisiblePropBounds(box.data());
  vtkCamera* camera = renderer->GetActiveCamera();
  const Direction& from = options.view.from;
  Direction right{};
  const Direction& up = options.view.up;
  right = {up[1] * from[2] - up[2] * from[1], up[2] * from[0] - up[0] * from[2],
           up[0] * from[1] - up[1] * from[0]};
  const double length = std::hypot(right[0], right[1], right[2]);
  for (double& value : right) value /= length;
  const Direction above = {from[1] * right[2] - from[2] * right[1], from[2] * right[0] - from[0] * right[2],
                           from[0] * right[1] - from[1] * right[0]};
  double half_width = 0;
  double half_height = 0;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const double half = (box[2 * axis + 1] - box[2 * axis]) / 2;
    half_width += half * std::abs(right[axis]);
    half_height += half * std::abs(above[axis]);
  }
  constexpr double kUsedWidth = 0.92;
  const double used_top = options.title.empty() ? 0.96 : 0.92;
  const double used_bottom = options.scale ? kBarTop + 0.02 : 0.04;
  const double used_height = used_top - used_bottom;
  const double aspect = static_cast<double>(options.width) / options.height;
  const double scale = std::max(half_height / used_height, half_width / (kUsedWidth * aspect));
  if (scale > 0) camera->SetParallelScale(scale);
  camera->SetWindowCenter(0, 1 - (used_top + used_bottom));
}

void set_caption(vtkCaptionActor2D* caption, const SceneOptions& options) {
  caption->GetTextActor()->SetTextScaleModeToNone();
  set_text(caption->GetCaptionTextProperty(), options, kLabelSize);
}

// Small axes in the lower left corner that turn with the view.
vtkSmartPointer<vtkRenderer> make_axes(const SceneOptions& options) {
  auto renderer = vtkSmartPointer<vtkRenderer>::New();
  const double width = 0.16 * options.height / options.width;
  renderer->SetViewport(0.005, 0.005, 0.005 + width, 0.165);
  renderer->SetLayer(1);
  vtkNew<vtkAxesActor> axes;
  axes->SetShaftTypeToCylinder();
  axes->SetCylinderRadius(0.03);
  axes->SetConeRadius(0.25);
  axes->SetNormalizedTipLength(0.25, 0.25, 0.25);
  axes->SetNormalizedShaftLength(0.75, 0.75, 0.75);
  axes->SetNormalizedLabelPosition(1.35, 1.35, 1.35);
  set_caption(axes->GetXAxisCaptionActor2D(), options);
  set_caption(axes->GetYAxisCaptionActor2D(), options);
  set_caption(axes->GetZAxisCaptionActor2D(), options);
  axes->SetXAxisLabelText("x");
  axes->SetYAxisLabelText("y");
  axes->SetZAxisLabelText("z");
  renderer->AddActor(axes);
  look(renderer, options.view);
  renderer->GetActiveCamera()->SetParallelScale(1.5);
  return renderer;
}

}  // namespace

vtkSmartPointer<vtkPolyData> outer_faces(vtkUnstructuredGrid* grid, vtkDataArray* scalars, bool per_cell) {
  vtkNew<vtkUnstructuredGrid> bare;
  bare->CopyStructure(grid);
  if (scalars != nullptr && per_cell) bare->GetCellData()->SetScalars(scalars);
  if (scalars != nullptr && !per_cell) bare->GetPointData()->SetScalars(scalars);
  vtkNew<vtkGeometryFilter> filter;
  filter->SetInputData(bare);
  filter->Update();
  return filter->GetOutput();
}

struct Studio::Window {
  std::unique_ptr<OffscreenWindow> offscreen;
};

Studio::Studio(int width, int height)
    : window_(std::make_unique<Window>(Window{make_offscreen_window(kFiner * width, kFiner * height)})) {}

Studio::~Studio() = default;

std::string Studio::draw(const std::vector<ShownPart>& parts, const SceneOptions& options) {
  vtkNew<vtkRenderer> renderer;
  renderer->SetBackground(options.background[0], options.background[1], options.background[2]);
  vtkSmartPointer<vtkLookupTable> colours;
  if (options.scale) colours = make_colour_map(options.scale->map, options.scale->low, options.scale->high);
  bool any_faint = false;
  std::size_t number = 0;
  for (const ShownPart& part : parts) {
    if (part.faces->GetNumberOfCells() == 0) continue;
    add_faces(renderer, part, colours, kPartColours[number++ % kPartColours.size()], options.mesh_edges);
    if (!options.mesh_edges || part.is_faint) add_outline(renderer, part);
    any_faint = any_faint || part.is_faint;
  }
  look(renderer, options.view);
  fit(renderer, options);
  add_title(renderer, options);
  if (options.scale) add_colour_bar(renderer, colours, options);
  vtkRenderWindow& window = window_->offscreen->window();
  // The picture is drawn finer and averaged, which depth peeling, unlike multisampling, goes along with.
  window.SetMultiSamples(0);
  window.SetNumberOfLayers(2);
  window.SetAlphaBitPlanes(1);
  if (any_faint) {
    renderer->SetUseDepthPeeling(1);
    renderer->SetMaximumNumberOfPeels(8);
  }
  window.AddRenderer(renderer);
  const vtkSmartPointer<vtkRenderer> axes = make_axes(options);
  window.AddRenderer(axes);
  window.Render();
  std::string png = take_picture(window);
  window.RemoveRenderer(axes);
  window.RemoveRenderer(renderer);
  return png;
}

}  // namespace render
