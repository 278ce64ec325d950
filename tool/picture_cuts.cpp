#include "tool/picture_cuts.h"

#include <algorithm>
#include <limits>
#include <set>
#include <utility>
#include <vtkCellData.h>
#include <vtkFloatArray.h>
#include <vtkPointData.h>

#include "fmt/format.h"
#include "host/text_encoding.h"
#include "tool/choice.h"
#include "tool/exit_status.h"
#include "tool/vector_components.h"
#include "vtk/part_grid.h"

namespace tool {
namespace {

constexpr char kColours[] = "colours";
constexpr char kVectors[] = "vectors";

ChosenParts volumes_to_cut(host::Session& session, const RenderOptions& options) {
  const std::set<host::PartKind> solid = {host::PartKind::volume, host::PartKind::whole};
  std::set<int> chosen;
  for (const int part : choose_parts(session, options.parts).at(session)) {
    if (solid.contains(session.part(part).kind)) chosen.insert(part);
  }
  if (!chosen.empty()) return {session, chosen};
  for (const host::PartKind kind : solid) {
    for (const host::Part& part : session.parts()) {
      if (part.kind == kind && part.element_count() > 0) chosen.insert(part.number);
    }
    if (!chosen.empty()) return {session, chosen};
  }
  throw CommandError(ExitStatus::failure, options.dataset.file, "there is no volume to cut");
}

bool is_vector_per_node(const host::Variable& variable) {
  return variable.kind == host::VariableKind::vector && variable.location == host::Location::node;
}

Quantity find_vector(host::Session& session, const char* option, const std::string& name) {
  Quantity chosen = choose_quantity(session, name);
  if (!is_vector_per_node(chosen.variable) || chosen.component.value_or(kMagnitude) != kMagnitude)
    throw CommandError(ExitStatus::usage, fmt::format("{}: '{}' is not a vector per node", option, name));
  return chosen;
}

Quantity first_vector(host::Session& session) {
  for (const host::Variable& variable : session.variables()) {
    if (is_vector_per_node(variable)) return {variable, std::nullopt, std::nullopt};
  }
  throw CommandError(ExitStatus::usage, session.path().string(), "there is no vector per node to follow");
}

vtkSmartPointer<vtkFloatArray> undefined(vtkIdType count, int components) {
  auto values = vtkSmartPointer<vtkFloatArray>::New();
  values->SetNumberOfComponents(components);
  values->SetNumberOfTuples(count);
  values->Fill(std::numeric_limits<double>::quiet_NaN());
  return values;
}

// The volumes with what colours them and what streamlines and arrows follow.
class Volumes {
 public:
  Volumes(PictureValues& values, const ColoursOf& colours, bool per_cell)
      : values_(values), colours_(colours), per_cell_(per_cell) {}

  vtkSmartPointer<vtkUnstructuredGrid> grid(int part, const std::optional<Quantity>& vector) const {
    const vtkSmartPointer<vtkUnstructuredGrid> grid = vtkdata::make_part_grid(values_.session(), part);
    if (colours_) {
      vtkSmartPointer<vtkDataArray> values = colours_(part);
      if (values == nullptr)
        values = undefined(per_cell_ ? grid->GetNumberOfCells() : grid->GetNumberOfPoints(), 1);
      values->SetName(kColours);
      if (per_cell_) {
        grid->GetCellData()->SetScalars(values);
      } else {
        grid->GetPointData()->SetScalars(values);
      }
    }
    if (vector) {
      vtkSmartPointer<vtkDataArray> values = values_.of(*vector, part);
      if (values == nullptr) values = undefined(grid->GetNumberOfPoints(), 3);
      values->SetName(kVectors);
      grid->GetPointData()->SetVectors(values);
    }
    return grid;
  }

 private:
  PictureValues& values_;
  const ColoursOf& colours_;
  bool per_cell_;
};

vtkSmartPointer<vtkPolyData> isosurface(PictureValues& values, vtkUnstructuredGrid* grid, int part,
                                        const CutChoice::Isosurface& cut) {
  const vtkSmartPointer<vtkDataArray> contoured = values.of(cut.scalar, part);
  if (contoured == nullptr) return nullptr;
  return analysis::cut_by_value(grid, contoured, cut.value);
}

void add_cut(std::vector<MadeCut>& made, const std::string& text, vtkPolyData* faces, bool is_mesh) {
  if (faces == nullptr || faces->GetNumberOfCells() == 0) return;
  render::ShownPart shown;
  shown.faces = faces;
  shown.is_mesh = is_mesh;
  made.push_back({text, std::move(shown)});
}

}  // namespace

CutChoice choose_cuts(host::Session& session, const RenderOptions& options) {
  CutChoice choice;
  choice.seeds = options.seeds;
  if (!options.arrows.empty()) choice.arrows = find_vector(session, "--arrows", options.arrows);
  for (const std::string& text : options.slices)
    choice.planes.push_back({"--slice " + text, parse_plane(text)});
  for (const std::string& text : options.isosurfaces) {
    const auto [name, value] = parse_isosurface(text);
    PictureScalar scalar = find_scalar(session, name);
    if (scalar.quantity.is_per_element())
      throw CommandError(ExitStatus::usage, fmt::format("--iso: '{}' is not given per node", name));
    choice.isosurfaces.push_back({"--iso " + text, std::move(scalar), value});
  }
  for (const std::string& text : options.streamlines)
    choice.streamlines.push_back({"--streamlines " + text, parse_seeds(text)});
  if (!choice.streamlines.empty())
    choice.flow = options.flow.empty() ? first_vector(session) : find_vector(session, "--flow", options.flow);
  if (options.has_cuts()) choice.volumes = volumes_to_cut(session, options);
  return choice;
}

std::vector<MadeCut> make_cuts(PictureValues& values, const CutChoice& choice, const ColoursOf& colours,
                               bool per_cell, double tube_radius) {
  std::vector<MadeCut> made;
  const Volumes volumes(values, colours, per_cell);
  std::vector<vtkSmartPointer<vtkUnstructuredGrid>> flows;
  for (const int part : choice.volumes.at(values.session())) {
    if (!choice.planes.empty() || !choice.isosurfaces.empty()) {
      const vtkSmartPointer<vtkUnstructuredGrid> grid = volumes.grid(part, choice.arrows);
      for (const CutChoice::Plane& cut : choice.planes)
        add_cut(made, cut.text, analysis::cut_by_plane(grid, cut.plane), true);
      for (const CutChoice::Isosurface& cut : choice.isosurfaces)
        add_cut(made, cut.text, isosurface(values, grid, part, cut), false);
    }
    if (choice.flow) flows.push_back(volumes.grid(part, choice.flow));
  }
  if (flows.empty()) return made;
  const vtkSmartPointer<vtkUnstructuredGrid> flow = analysis::joined(flows);
  flow->GetPointData()->SetActiveVectors(kVectors);
  flow->GetPointData()->SetActiveScalars(colours && !per_cell ? kColours : nullptr);
  flow->GetCellData()->SetActiveScalars(colours && per_cell ? kColours : nullptr);
  for (const CutChoice::Streamlines& lines : choice.streamlines) {
    const auto seeds = analysis::seed_points(lines.seeds, choice.seeds);
    add_cut(made, lines.text, analysis::tubes(analysis::streamlines(flow, seeds), tube_radius), false);
  }
  return made;
}

}  // namespace tool
