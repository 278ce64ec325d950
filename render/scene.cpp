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
#include "render/part_key.h"
#include "render/picture.h"
#include "render/text.h"

namespace render {
namespace {

constexpr Colour kFaint = {0.45, 0.5, 0.55};
constexpr double kFaintOpacity = 0.1;
constexpr Colour kInk = {0.12, 0.14, 0.18};
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
    } else if (part.is_ink) {
      add_plain(part, kInk);
    } else if (colours_ == nullptr) {
      const Colour& colour = kPartColours[count_ % kPartColours.size()];
      add_plain(part, colour);
      if (!part.name.empty()) key_.push_back({part.name, colour});
    } else if (has_scalars(part.faces)) {
      add_coloured(part);
    } else {
      add_plain(part, kUndefinedColour);
    }
    if (part.is_mesh && (!options_.mesh_edges || part.is_faint)) add_outline(part);
    ++count_;
  }

  bool has_faint() const { return has_faint_; }
  bool has_values() const { return has_values_; }
  bool has_undefined() const { return has_undefined_; }
  // The parts with a colour of their own.
  const std::vector<KeyEntry>& key() const { return key_; }

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

  void add_plain(const ShownPart& part, const Colour& colour) {
    const vtkSmartPointer<vtkActor> actor = add_faces(with_normals(part.faces), 0);
    actor->GetProperty()->SetColor(colour[0], colour[1], colour[2]);
    set_light(actor, 0.5);
    if (part.is_mesh) set_edges(actor);
  }

  void add_coloured(const ShownPart& part) {
    const FacesByValues split = split_by_values(with_normals(part.faces));
    add_values(split.defined, part.is_mesh, 0);
    add_values(split.partial, part.is_mesh, kPartialBehind);
    add_values(split.undefined, part.is_mesh, kUndefinedBehind);
    has_values_ = has_values_ || split.defined->GetNumberOfCells() + split.partial->GetNumberOfCells() > 0;
    has_undefined_ =
        has_undefined_ || split.partial->GetNumberOfCells() + split.undefined->GetNumberOfCells() > 0;
  }

  void add_values(vtkPolyData* faces, bool is_mesh, double behind) {
    if (faces->GetNumberOfCells() == 0) return;
    const vtkSmartPointer<vtkActor> actor = add_faces(faces, behind);
    vtkMapper* mapper = actor->GetMapper();
    mapper->ScalarVisibilityOn();
    mapper->SetLookupTable(colours_);
    mapper->UseLookupTableScalarRangeOn();
    mapper->InterpolateScalarsBeforeMappingOn();
    set_light(actor, kLargestShade);
    if (is_mesh) set_edges(actor);
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
    actor->GetProperty()->SetColor(kInk[0], kInk[1], kInk[2]);
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
  std::vector<KeyEntry> key_;
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

// Leaves the area of the picture to the renderer, and returns one for what is around it.
vtkSmartPointer<vtkRenderer> crop(vtkRenderer* renderer, const Area& area, const SceneOptions& options) {
  renderer->SetViewport(0, area.bottom / options.height, 1, area.top() / options.height);
  auto around = vtkSmartPointer<vtkRenderer>::New();
  around->SetBackground(renderer->GetBackground());
  return around;
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
  const Extent extent = options.extent ? *options.extent : extent_of(parts, options.view);
  vtkSmartPointer<vtkRenderer> around;  // where texts are
  if (options.is_cropped) {
    around = crop(renderer, layout.scene, options);
    const Area area = {layout.scene.left, 0, layout.scene.width, layout.scene.height};
    aim_camera(renderer, options.view, extent, area, options.width, static_cast<int>(area.height),
               options.zoom);
  } else {
    aim_camera(renderer, options.view, extent, layout.scene, options.width, options.height, options.zoom);
  }
  vtkRenderWindow& window = window_->offscreen->window();
  // Supersampling in place of multisampling, which depth peeling does not support.
  window.SetMultiSamples(0);
  window.SetNumberOfLayers(2);
  window.SetAlphaBitPlanes(1);
  if (actors.has_faint()) {
    renderer->SetUseDepthPeeling(1);
    renderer->SetMaximumNumberOfPeels(8);
  }
  if (around) window.AddRenderer(around);
  window.AddRenderer(renderer);
  vtkRenderer* texts = around ? around.Get() : renderer.Get();
  vtkSmartPointer<vtkRenderer> axes;
  if (layout.is_annotated) {
    const TextStyle style = {options.font, text_colour(options.background)};
    add_title(texts, options.title, layout, style);
    if (options.scale && actors.has_values()) {
      add_legend(texts, colours, options.scale->title, actors.has_undefined(), layout, style);
    } else if (options.scale && !options.scale->note.empty()) {
      add_note(texts, options.scale->note, layout, style);
    } else if (!options.scale) {
      add_part_key(texts, actors.key(), layout, style);
    }
    axes = add_axes(texts, options.view, options.axes, layout, options.width, options.height, style);
    window.AddRenderer(axes);
  }
  window.Render();
  std::string png = take_picture(window);
  if (axes) window.RemoveRenderer(axes);
  window.RemoveRenderer(renderer);
  if (around) window.RemoveRenderer(around);
  return png;
}

}  // namespace render
