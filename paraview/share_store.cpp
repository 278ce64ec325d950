#include "paraview/share_store.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <vtkCellData.h>
#include <vtkDataAssembly.h>
#include <vtkFieldData.h>
#include <vtkFloatArray.h>
#include <vtkInformation.h>
#include <vtkInformationStringKey.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkStringArray.h>

#include "paraview/hierarchy.h"
#include "paraview/share_cells.h"
#include "vtk/part_grid.h"

namespace paraview {
namespace {

vtkSmartPointer<vtkFloatArray> adopt(parallel::Array<float> values, int components) {
  auto array = vtkSmartPointer<vtkFloatArray>::New();
  array->SetNumberOfComponents(components);
  const auto size = static_cast<vtkIdType>(values.size());
  if (size > 0) array->SetArray(values.release(), size, 0, vtkFloatArray::VTK_DATA_ARRAY_DELETE);
  return array;
}

vtkSmartPointer<vtkFloatArray> undefined(vtkIdType tuples, int components) {
  auto array = vtkSmartPointer<vtkFloatArray>::New();
  array->SetNumberOfComponents(components);
  array->SetNumberOfTuples(tuples);
  std::fill_n(array->GetPointer(0), tuples * components, std::numeric_limits<float>::quiet_NaN());
  return array;
}

void set_identity(vtkDataArray* values, const VariableInfo& variable) {
  values->SetName(variable.name.c_str());
  if (!variable.unit.empty())
    values->GetInformation()->Set(vtkDataArray::UNITS_LABEL(), variable.unit.c_str());
}

vtkSmartPointer<vtkIdTypeArray> ids_of(const parallel::NodeSet& nodes) {
  auto ids = vtkSmartPointer<vtkIdTypeArray>::New();
  ids->SetName("GlobalNodeIds");
  ids->SetNumberOfValues(static_cast<vtkIdType>(nodes.count));
  vtkIdType* to = ids->GetPointer(0);
  for (const parallel::Run run : nodes.runs) {
    for (vtkIdType node = run.first; node < vtkIdType{run.first} + run.count; ++node) *to++ = node;
  }
  return ids;
}

}  // namespace

void ShareStore::clear() {
  parts_.clear();
}

void ShareStore::set_mesh(int number, parallel::ShareCells cells, const parallel::NodeSet& nodes) {
  Part& part = parts_[number];
  part.ghosts = cells.ghosts;
  part.ghost_nodes = std::move(cells.ghost_nodes);
  part.marks = {};
  vtkdata::Cells made = make_cells(std::move(cells));
  if (!are_same(part.cells, made)) {
    part.cells = std::move(made);
    part.mesh = nullptr;
  }
  part.node_ids = is_shared_ ? ids_of(nodes) : nullptr;
  part.values.clear();
}

void ShareStore::set_points(int number, parallel::Array<float> points) {
  Part& part = parts_.at(number);
  const auto count = static_cast<vtkIdType>(points.size() / 3);
  if (part.points && part.points->GetNumberOfPoints() == count &&
      (count == 0 ||
       std::memcmp(part.points->GetVoidPointer(0), points.data(), points.span().size_bytes()) == 0)) {
    return;
  }
  part.points = vtkSmartPointer<vtkPoints>::New();
  part.points->SetData(adopt(std::move(points), 3));
  part.mesh = nullptr;
}

void ShareStore::set_values(int number, int variable, int components, parallel::Array<float> values) {
  parts_.at(number).values[variable] = adopt(std::move(values), components);
}

void ShareStore::drop_values(int number, int variable) {
  parts_.at(number).values.erase(variable);
}

void ShareStore::drop_part(int number) {
  parts_.erase(number);
}

void ShareStore::fill_missing(const StepPlan& plan, const DatasetInfo& info) {
  for (const layout::VariableValues& wanted : plan.layout.variables) {
    const VariableInfo& variable = info.variables[static_cast<std::size_t>(wanted.number) - 1];
    for (auto& [number, part] : parts_) {
      vtkSmartPointer<vtkDataArray>& values = part.values[wanted.number];
      if (values || !part.points) continue;
      const vtkIdType tuples =
          variable.is_per_cell ? part.cells.types->GetNumberOfValues() : part.points->GetNumberOfPoints();
      values = undefined(tuples, variable.components);
    }
  }
}

// 1 for each blanked node; empty where nothing tells.
std::vector<std::uint8_t> ShareStore::blanked_nodes(const Part& part, int set, const StepPlan& plan,
                                                    const DatasetInfo& info) {
  std::vector<std::uint8_t> blanked;
  for (const layout::VariableValues& variable : plan.layout.variables) {
    const bool is_mark = info.variables[static_cast<std::size_t>(variable.number) - 1].name.starts_with('@');
    if (variable.is_material || is_mark) continue;
    if (!variable.sets[static_cast<std::size_t>(set)].components[0].exists()) continue;
    const auto found = part.values.find(variable.number);
    if (found == part.values.end()) continue;
    const auto* values = vtkFloatArray::SafeDownCast(found->second);
    const std::vector<std::uint8_t>::size_type nodes = static_cast<std::size_t>(values->GetNumberOfTuples());
    if (blanked.empty()) blanked.resize(nodes, 1);
    for (std::size_t i = 0; i < nodes; ++i) {
      if (!std::isnan(values->GetTypedComponent(static_cast<vtkIdType>(i), 0))) blanked[i] = 0;
    }
  }
  return blanked;
}

void ShareStore::mark_ghosts(const StepPlan& plan, const DatasetInfo& info) {
  for (const layout::PartLists& lists : plan.layout.parts) {
    const auto found = parts_.find(lists.number);
    if (found == parts_.end() || !found->second.points) continue;
    Part& part = found->second;
    const bool is_overset = plan.layout.sets[static_cast<std::size_t>(lists.set)].is_overset;
    const std::vector<std::uint8_t> blanked =
        is_overset ? blanked_nodes(part, lists.set, plan, info) : std::vector<std::uint8_t>();
    GhostMarks marks;
    if (plan.ghost_layers > 0 || is_overset) {
      // Marks of neighbours alone stay as they are.
      if (!is_overset && part.marks.cells) continue;
      marks = make_ghost_marks(part.cells, part.points->GetNumberOfPoints(), part.ghosts,
                               part.ghost_nodes.span(), blanked);
    }
    if (!are_same(part.marks, marks)) part.marks = std::move(marks);
  }
}

vtkSmartPointer<vtkDataObject> ShareStore::grid_of(int number, const DatasetInfo& info) {
  const auto found = parts_.find(number);
  if (found == parts_.end() || !found->second.points) return nullptr;
  Part& part = found->second;
  // Kept, since make_grid looks at every cell.
  if (!part.mesh) part.mesh = vtkdata::make_grid(part.points, part.cells);
  auto grid = vtkSmartPointer<vtkUnstructuredGrid>::New();
  grid->CopyStructure(part.mesh);
  for (const VariableInfo& variable : info.variables) {
    const auto values = part.values.find(variable.number);
    if (values == part.values.end() || !values->second) continue;
    if (values->second->GetName() == nullptr) set_identity(values->second, variable);
    if (variable.is_per_cell) {
      grid->GetCellData()->AddArray(values->second);
    } else {
      grid->GetPointData()->AddArray(values->second);
    }
  }
  if (part.marks.cells) {
    grid->GetCellData()->AddArray(part.marks.cells);
    grid->GetPointData()->AddArray(part.marks.points);
  }
  if (part.node_ids) grid->GetPointData()->SetGlobalIds(part.node_ids);
  return grid;
}

vtkSmartPointer<vtkPartitionedDataSetCollection> ShareStore::collection(const StepPlan& plan,
                                                                        const DatasetInfo& info) {
  auto collection = vtkSmartPointer<vtkPartitionedDataSetCollection>::New();
  collection->SetNumberOfPartitionedDataSets(static_cast<unsigned>(plan.parts.size()));
  unsigned index = 0;
  for (const PartInfo& part : plan.parts) {
    collection->SetPartition(index, 0, grid_of(part.number, info));
    collection->GetMetaData(index)->Set(vtkCompositeDataSet::NAME(), part.name.c_str());
    ++index;
  }
  collection->SetDataAssembly(make_hierarchy(plan.parts, plan.folders));

  vtkNew<vtkStringArray> labels;
  labels->SetName("Labels");
  for (const std::string& label : info.labels) labels->InsertNextValue(label);
  collection->GetFieldData()->AddArray(labels);

  vtkNew<vtkStringArray> missing;
  missing->SetName("Missing");
  for (const layout::VariableValues& variable : plan.layout.variables) {
    const auto is_there = [](const layout::SetValues& set) { return set.components[0].exists(); };
    if (variable.is_material || std::any_of(variable.sets.begin(), variable.sets.end(), is_there)) continue;
    missing->InsertNextValue(info.variables[static_cast<std::size_t>(variable.number) - 1].name);
  }
  if (missing->GetNumberOfValues() > 0) collection->GetFieldData()->AddArray(missing);
  return collection;
}

}  // namespace paraview
