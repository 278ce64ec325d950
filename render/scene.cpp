#include "render/scene.h"

#include <algorithm>
#include <vtkActor.h>
#include <vtkCellData.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkRenderWindow.h>
#include <vtkRenderer.h>

#include "render/axes.h"
#include "render/layout.h"
#include "render/legend.h"
#include "render/offscreen_window.h"
#include "render/picture.h"
#include "render/text.h"

namespace render {
namespace {

constexpr Colour kFaint = {0.45, 0.5, 0.55};
constexpr double kFaintOpacity = 0.1;
// Of parts without a scalar, in turn.
constexpr std::array<Colour, 8> kPartColours = {{{0.60, 0.70, 0.80},
                                                 {0.85, 0.68, 0.50},
                                                 {0.62, 0.75, 0.58},
                                                 {0.80, 0.60, 0.62},
                                                 {0.70, 0.64, 0.80},
                                                 {0.82, 0.80, 0.55},
                                                 {0.55, 0.76, 0.76},
                                                 {0.76, 0.76, 0.76}}};

// How far faces are moved back so that others that coincide with them cover them, in VTK's units of an
// offset: 1/65000 of the depth of the scene.
constexpr double kBehindPreviousPart = 0.1;
constexpr double kPartialBehind = 100;
constexpr double kUndefinedBehind = 200;

bool has_scalars(vtkPolyData* faces) {
  return faces->GetPointData()->GetScalars() != nullptr || faces->GetCellData()->GetScalars() != nullptr;
}

// What the parts have in common in one picture.
class PartActors {
 public:
  PartActors(vtkRenderer* renderer, const SceneOptions& options, vtkLookupTable* colours)
      : renderer_(renderer), options_(options), colours_(colours) {}

  void add(const ShownPart& part) {
    if (part.faces->GetNumberOfCells() == 0) return;
    if (part.is_faint) {
      add_faint(part.faces);
    } else if (colours_ == nullptr) {
      add_plain(part.faces, kPartColours[count_ % kPartColours.size()]);
    } else if (has_scalars(part.faces)) {
      add_coloured(part.faces);
    } else {
      add_plain(part.faces, kUndefinedColour);
    }
    if (!options_.mesh_edges || part.is_faint) add_outline(part);
    ++count_;
  }

  bool has_faint() const { return has_faint_; }
  bool has_values() const { return has_values_; }
  bool has_undefined() const { return has_undefined_; }

 private:
  vtkSmartPointer<vtkActor> add_faces(vtkPolyData* faces, double behind) {
    vtkNew<vtkPolyDataMapper> mapper;
    mapper->SetInputData(faces);
    mapper->ScalarVisibilityOff();
    mapper->SetResolveCoincidentTopologyToPolygonOffset();
    mapper->SetRelativeCoincidentTopologyPolygonOffsetParameters(
        0, behind + kBehindPreviousPart * static_cast<double>(count_));
    auto actor = vtkSmartPointer<vtkActor>::New();
    actor->SetMapper(mapper);
    renderer_->AddActor(actor);
    return actor;
  }

  void add_faint(vtkPolyData* faces) {
    const vtkSmartPointer<vtkActor> actor = add_faces(with_normals(faces), 0);
    actor->GetProperty()->SetColor(kFaint[0], kFaint[1], kFaint[2]);
    actor->GetProperty()->SetOpacity(kFaintOpacity);
    set_light(actor, 0.5);
    has_faint_ = true;
  }

  void add_plain(vtkPolyData* faces, const Colour& colour) {
    const vtkSmartPointer<vtkActor> actor = add_faces(with_normals(faces), 0);
    actor->GetProperty()->SetColor(colour[0], colour[1], colour[2]);
    set_light(actor, 0.5);
    set_edges(actor);
  }

  void add_coloured(vtkPolyData* faces) {
    const FacesByValues split = split_by_values(with_normals(faces));
    add_values(split.defined, 0);
    add_values(split.partial, kPartialBehind);
    add_values(split.undefined, kUndefinedBehind);
    has_values_ = has_values_ || split.defined->GetNumberOfCells() + split.partial->GetNumberOfCells() > 0;
    has_undefined_ =
        has_undefined_ || split.partial->GetNumberOfCells() + split.undefined->GetNumberOfCells() > 0;
  }

  void add_values(vtkPolyData* faces, double behind) {
    if (faces->GetNumberOfCells() == 0) return;
    const vtkSmartPointer<vtkActor> actor = add_faces(faces, behind);
    vtkMapper* mapper = actor->GetMapper();
    mapper->ScalarVisibilityOn();
    mapper->SetLookupTable(colours_);
    mapper->UseLookupTableScalarRangeOn();
    mapper->InterpolateScalarsBeforeMappingOn();
    set_light(actor, kLargestShade);
    set_edges(actor);
  }

  // A headlight: a face that looks at the eye has its very colour, one seen edge-on loses `shade` of it.
  static void set_light(vtkActor* actor, double shade) {
    actor->GetProperty()->SetAmbient(1 - shade);
    actor->GetProperty()->SetDiffuse(shade);
    actor->GetProperty()->SetSpecular(0);
  }

  void set_edges(vtkActor* actor) const {
    if (!options_.mesh_edges) return;
    actor->GetProperty()->EdgeVisibilityOn();
    actor->GetProperty()->SetEdgeColor(0.15, 0.15, 0.15);
    actor->GetProperty()->SetLineWidth(static_cast<float>(kSupersampling) * 0.6F);
  }

  void add_outline(const ShownPart& part) {
    vtkNew<vtkPolyDataMapper> mapper;
    mapper->SetInputData(outline(part.faces));
    mapper->ScalarVisibilityOff();
    mapper->SetResolveCoincidentTopologyToPolygonOffset();
    mapper->SetRelativeCoincidentTopologyLineOffsetParameters(0, -2);
    vtkNew<vtkActor> actor;
    actor->SetMapper(mapper);
    actor->GetProperty()->SetColor(0.12, 0.14, 0.18);
    actor->GetProperty()->SetLighting(false);
    actor->GetProperty()->SetLineWidth(static_cast<float>(kSupersampling) * 0.8F);
    actor->GetProperty()->SetOpacity(part.is_faint ? 0.5 : 1.0);
    renderer_->AddActor(actor);
  }

  vtkRenderer* renderer_;
  const SceneOptions& options_;
  vtkLookupTable* colours_;
  std::size_t count_ = 0;
  bool has_faint_ = false;
  bool has_values_ = false;
  bool has_undefined_ = false;
};

Extent extent_of(const std::vector<ShownPart>& parts, const View& view) {
  Extent extent(view);
  for (const ShownPart& part : parts) {
    if (part.faces->GetPoints() != nullptr) extent.add(part.faces->GetPoints());
  }
  return extent;
}

void add_title(vtkRenderer* renderer, const std::string& title, const Layout& layout,
               const TextStyle& style) {
  if (title.empty()) return;
  add_text(renderer, fit_text(title, style, layout.title_size, layout.title.width), style,
           {layout.title.left, layout.title.top(), Anchor::left, true});
}

int line_count(const std::string& text) {
  return text.empty() ? 0 : 1 + static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

}  // namespace

struct SceneRenderer::Window {
  std::unique_ptr<OffscreenWindow> offscreen;
};

SceneRenderer::SceneRenderer(int width, int height)
    : window_(std::make_unique<Window>(
          Window{make_offscreen_window(kSupersampling * width, kSupersampling * height)})) {}

SceneRenderer::~SceneRenderer() = default;

std::string SceneRenderer::draw(const std::vector<ShownPart>& parts, const SceneOptions& options) {
  vtkNew<vtkRenderer> renderer;
  renderer->SetBackground(options.background[0], options.background[1], options.background[2]);
  vtkSmartPointer<vtkLookupTable> colours;
  if (options.scale) colours = make_colour_map(options.scale->map, options.scale->low, options.scale->high);
  PartActors actors(renderer, options, colours);
  for (const ShownPart& part : parts) actors.add(part);

  const Layout layout = make_layout(options.width, options.height, line_count(options.title));
  aim_camera(renderer, options.view, options.extent ? *options.extent : extent_of(parts, options.view),
             layout.scene, options.width, options.height);
  vtkRenderWindow& window = window_->offscreen->window();
  // Supersampling in place of multisampling, which depth peeling does not support.
  window.SetMultiSamples(0);
  window.SetNumberOfLayers(2);
  window.SetAlphaBitPlanes(1);
  if (actors.has_faint()) {
    renderer->SetUseDepthPeeling(1);
    renderer->SetMaximumNumberOfPeels(8);
  }
  window.AddRenderer(renderer);
  vtkSmartPointer<vtkRenderer> axes;
  if (layout.is_annotated) {
    const TextStyle style = {options.font, text_colour(options.background)};
    add_title(renderer, options.title, layout, style);
    if (options.scale && actors.has_values()) {
      add_legend(renderer, colours, options.scale->title, actors.has_undefined(), layout, style);
    } else if (options.scale && !options.scale->note.empty()) {
      add_note(renderer, options.scale->note, layout, style);
    }
    axes = add_axes(renderer, options.view, options.axes, layout, options.width, options.height, style);
    window.AddRenderer(axes);
  }
  window.Render();
  std::string png = take_picture(window);
  if (axes) window.RemoveRenderer(axes);
  window.RemoveRenderer(renderer);
  return png;
}

}  // namespace render
