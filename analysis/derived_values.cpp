#include "analysis/derived_values.h"

#include <cmath>
#include <cstring>
#include <limits>

#include "analysis/point_table.h"
#include "vtk/part_grid.h"
#include "vtk/points.h"

namespace analysis {
namespace {

// Whether two tuples are the same numbers, or both undefined.
bool are_equal(const float* a, const float* b, int components) {
  for (int c = 0; c < components; ++c) {
    if (a[c] != b[c] && !(std::isnan(a[c]) && std::isnan(b[c]))) return false;
  }
  return true;
}

vtkSmartPointer<vtkFloatArray> undefined_values(int components, std::size_t tuples, const std::string& name) {
  auto values = vtkSmartPointer<vtkFloatArray>::New();
  values->SetName(name.c_str());
  values->SetNumberOfComponents(components);
  values->SetNumberOfTuples(static_cast<vtkIdType>(tuples));
  values->Fill(std::numeric_limits<float>::quiet_NaN());
  return values;
}

}  // namespace

vtkSmartPointer<vtkFloatArray> DerivedValues::source_of(const DerivedVariable& variable, int part) {
  const vtkSmartPointer<vtkDataArray> values =
      vtkdata::make_values(session_, variable.variable, part, variable.name);
  auto* floats = vtkFloatArray::SafeDownCast(values);
  if (floats == nullptr || takes_vector(variable.derivation) || floats->GetNumberOfComponents() == 1)
    return floats;
  auto one = vtkSmartPointer<vtkFloatArray>::New();
  one->SetNumberOfValues(floats->GetNumberOfTuples());
  for (vtkIdType i = 0; i < floats->GetNumberOfTuples(); ++i)
    one->SetValue(i, floats->GetTypedComponent(i, variable.component));
  return one;
}

const DerivedValues::Derived& DerivedValues::on_whole(const DerivedVariable& variable, int part) {
  const auto [found, is_new] =
      found_.try_emplace({part, variable.derivation, variable.variable, variable.component});
  if (!is_new) return found->second;
  found->second.source = source_of(variable, part);
  if (!found->second.source) return found->second;
  if (!grids_.contains(part)) {
    const host::Coordinates& coordinates =
        coordinates_.try_emplace(part, cartesian_coordinates(session_, part, is_cylindrical_)).first->second;
    grids_.emplace(part, vtkdata::make_grid(vtkdata::make_points(coordinates),
                                            vtkdata::make_cells(session_.elements(part))));
  }
  found->second.values = derive(grids_.at(part), found->second.source, variable.derivation, variable.name);
  return found->second;
}

vtkSmartPointer<vtkFloatArray> DerivedValues::on_part(const DerivedVariable& variable, int part) {
  if (step_ != session_.step()) {
    coordinates_.clear();
    grids_.clear();
    found_.clear();
    step_ = session_.step();
  }
  const bool is_whole = session_.part(part).kind == host::PartKind::whole;
  if (is_whole && needs_elements(variable.derivation)) return on_whole(variable, part).values;
  const vtkSmartPointer<vtkFloatArray> source = source_of(variable, part);
  if (!source) return nullptr;
  if (!needs_elements(variable.derivation)) return magnitudes(source, variable.name);
  const host::Coordinates nodes = session_.coordinates(part);
  const PointTable table(nodes);
  const int components = gives_vector(variable.derivation) ? 3 : 1;
  auto values = undefined_values(components, nodes.size(), variable.name);
  std::vector<char> is_done(nodes.size(), 0);
  for (const int whole : whole_parts(session_)) {
    const Derived& derived = on_whole(variable, whole);
    if (!derived.values) continue;
    const std::vector<std::int32_t> found = table.find_all(coordinates_.at(whole));
    for (std::size_t i = 0; i < found.size(); ++i) {
      const auto from = static_cast<vtkIdType>(i);
      // Nodes of two meshes that touch are told apart by their values.
      for (std::int32_t node = found[i]; node != PointTable::kNone; node = table.next(node)) {
        char& done = is_done[static_cast<std::size_t>(node)];
        const int width = source->GetNumberOfComponents();
        if (done != 0 ||
            !are_equal(source->GetPointer(node * width), derived.source->GetPointer(from * width), width))
          continue;
        done = 1;
        std::memcpy(values->GetPointer(node * components), derived.values->GetPointer(from * components),
                    sizeof(float) * static_cast<std::size_t>(components));
      }
    }
  }
  return values;
}

}  // namespace analysis
