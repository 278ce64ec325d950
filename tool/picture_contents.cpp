#include "tool/picture_contents.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vtkCellData.h>
#include <vtkPointData.h>

#include "analysis/arrows.h"
#include "host/bounding_box.h"
#include "host/text_encoding.h"
#include "tool/choice.h"
#include "tool/exit_status.h"
#include "tool/interrupt.h"
#include "vtk/part_grid.h"

namespace tool {
namespace {

// Of the size of what is shown.
constexpr double kTubeRadius = 0.002;
constexpr double kArrowDistance = 0.025;
constexpr double kLongestArrow = 1.8;  // of the distance of two arrows

// Of the box around parts, its diagonal.
double diagonal(host::Session& session, const std::vector<int>& parts) {
  host::BoundingBox box{{INFINITY, INFINITY, INFINITY}, {-INFINITY, -INFINITY, -INFINITY}};
  for (const int part : parts) {
    const auto of_part = host::bounding_box(session.coordinates(part));
    if (!of_part) continue;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      box.lowest[axis] = std::min(box.lowest[axis], of_part->lowest[axis]);
      box.highest[axis] = std::max(box.highest[axis], of_part->highest[axis]);
    }
  }
  const auto length = [&](std::size_t axis) { return double(box.highest[axis]) - double(box.lowest[axis]); };
  const double found = std::hypot(length(0), length(1), length(2));
  return found > 0 && std::isfinite(found) ? found : 1;
}

std::vector<int> joined(std::vector<int> a, const std::vector<int>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

// With cuts, surfaces are coloured where --parts chooses them; the usual ones are faint without --parts.
void choose_parts_beside_cuts(host::Session& session, const RenderOptions& options, PictureChoice& choice) {
  std::set<int> surfaces;
  for (const int part : choose_parts(session, options.parts).at(session)) {
    if (session.part(part).kind == host::PartKind::surface) surfaces.insert(part);
  }
  choice.parts = {session, surfaces};
  if (!options.parts.empty() || !options.faint.empty()) return;
  const std::vector<int> volumes = choice.cuts.volumes.at(session);
  std::set<int> around;
  for (const int part : usual_parts(session).at(session)) {
    if (!std::binary_search(volumes.begin(), volumes.end(), part)) around.insert(part);
  }
  choice.faint = {session, around};
}

}  // namespace

std::vector<int> PictureChoice::coloured(const host::Session& session) const {
  std::vector<int> numbers = parts.at(session);
  const std::vector<int> others = faint.at(session);
  std::erase_if(numbers, [&](int part) { return std::binary_search(others.begin(), others.end(), part); });
  return numbers;
}

PictureChoice choose_picture(host::Session& session, const RenderOptions& options) {
  PictureChoice choice;
  choice.steps = choose_steps(session, options.steps);
  session.select_step(choice.steps.front());
  choice.cuts = choose_cuts(session, options);
  choice.faint = choose_parts(session, options.faint);
  choice.focus = choose_parts(session, options.focus);
  if (options.has_cuts()) {
    choose_parts_beside_cuts(session, options, choice);
  } else {
    choice.parts = options.parts.empty() ? usual_parts(session) : choose_parts(session, options.parts);
  }
  const std::vector<int> with_values = joined(choice.coloured(session), choice.cuts.volumes.at(session));
  if (options.variables.empty()) {
    choice.scalars = {first_scalar(session, with_values)};
  } else if (options.variables == std::vector<std::string>{"none"}) {
    choice.scalars = {std::nullopt};
  } else {
    for (PictureScalar& scalar : find_scalars(session, options.variables))
      choice.scalars.emplace_back(std::move(scalar));
  }
  choice.range = colour_range(options);
  if (choice.has_cuts() || choice.cuts.arrows) {
    const std::vector<int> focus = choice.focus.at(session);
    choice.size = diagonal(session, focus.empty() ? with_values : focus) / options.zoom;
  }
  return choice;
}

PictureContents ContentsReader::read(const std::optional<PictureScalar>& scalar) {
  PictureContents contents;
  add_parts(contents, scalar);
  add_cuts(contents, scalar);
  return contents;
}

vtkSmartPointer<vtkDataArray> ContentsReader::values(const PictureScalar& scalar, int part) {
  const vtkSmartPointer<vtkDataArray> shown = values_.of(scalar, part);
  return compared_ == nullptr ? shown : compared_->difference(session_, part, scalar, shown);
}

render::ShownPart ContentsReader::shown_part(int part, vtkDataArray* values, bool per_cell) {
  const vtkSmartPointer<vtkUnstructuredGrid> grid = vtkdata::make_part_grid(session_, part);
  render::ShownPart shown;
  vtkSmartPointer<vtkDataArray> vectors;
  if (choice_.cuts.arrows && !choice_.has_cuts()) vectors = values_.of(*choice_.cuts.arrows, part);
  shown.faces = render::outer_faces(grid, values, per_cell, vectors);
  shown.name = host::printable(session_.part(part).name);
  return shown;
}

void ContentsReader::add_parts(PictureContents& contents, const std::optional<PictureScalar>& scalar) {
  const bool per_cell = scalar && scalar->quantity.is_per_element();
  for (const int part : choice_.coloured(session_)) {
    stop_if_interrupted();
    vtkSmartPointer<vtkDataArray> colours;
    if (scalar) colours = values(*scalar, part);
    contents.range.add(colours, session_.part(part).nodes);
    contents.parts.push_back(shown_part(part, colours, per_cell));
    add_arrow_points(contents, contents.parts.back().faces);
  }
  for (const int part : choice_.faint.at(session_)) {
    contents.parts.push_back(shown_part(part, nullptr, false));
    contents.parts.back().is_faint = true;
  }
}

void ContentsReader::add_cuts(PictureContents& contents, const std::optional<PictureScalar>& scalar) {
  if (!choice_.has_cuts()) return;
  const CutChoice& cuts = choice_.cuts;
  for (const auto& cut : cuts.planes) contents.empty.insert(cut.text);
  for (const auto& cut : cuts.isosurfaces) contents.empty.insert(cut.text);
  for (const auto& cut : cuts.streamlines) contents.empty.insert(cut.text);
  const bool per_cell = scalar && scalar->quantity.is_per_element();
  ColoursOf colours;
  if (scalar) colours = [&](int part) { return values(*scalar, part); };
  for (MadeCut& cut : make_cuts(values_, cuts, colours, per_cell, kTubeRadius * choice_.size)) {
    contents.empty.erase(cut.text);
    vtkPolyData* faces = cut.shown.faces;
    vtkDataArray* scalars = faces->GetPointData()->GetScalars();
    if (scalars == nullptr) scalars = faces->GetCellData()->GetScalars();
    contents.range.add(scalars, static_cast<int>(faces->GetNumberOfPoints()));
    add_arrow_points(contents, faces);
    contents.parts.push_back(std::move(cut.shown));
  }
}

void ContentsReader::add_arrow_points(PictureContents& contents, vtkPolyData* surface) const {
  if (!choice_.cuts.arrows || surface->GetPointData()->GetVectors() == nullptr) return;
  const vtkSmartPointer<vtkPolyData> points = analysis::thinned(surface, kArrowDistance * choice_.size);
  contents.longest_vector = std::max(contents.longest_vector, analysis::longest_vector(points));
  contents.arrow_points.push_back(points);
}

void add_arrows(PictureContents& contents, const PictureChoice& choice, double longest) {
  if (!(longest > 0)) return;
  for (const auto& points : contents.arrow_points) {
    render::ShownPart shown;
    shown.faces = analysis::arrows(points, kLongestArrow * kArrowDistance * choice.size / longest);
    shown.is_mesh = false;
    shown.is_ink = true;
    if (shown.faces->GetNumberOfCells() > 0) contents.parts.push_back(std::move(shown));
  }
}

}  // namespace tool
