#include "paraview/share_store.h"

#include <algorithm>
#include <set>
#include <vtkCellData.h>
#include <vtkDataAssembly.h>
#include <vtkFieldData.h>
#include <vtkInformation.h>
#include <vtkInformationStringKey.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkStringArray.h>
#include <vtkUnstructuredGrid.h>

#include "vtk/part_grid.h"

namespace paraview {
namespace {

// The attribute that ParaView shows in place of a node's name, whose characters are restricted.
constexpr char kLabel[] = "label";
constexpr char kRootName[] = "Parts";

void put(vtkMultiProcessStream& stream, const std::vector<host::PartFolder>& folders) {
  put_all(stream, folders, [&](const host::PartFolder& folder) {
    stream << folder.name;
    put_all(stream, folder.parts, [&](int part) { stream << part; });
    put(stream, folder.folders);
  });
}

std::vector<host::PartFolder> take_folders(vtkMultiProcessStream& stream) {
  return take_all(stream, [&] {
    host::PartFolder folder;
    stream >> folder.name;
    folder.parts = take_all(stream, [&] { return take<int>(stream); });
    folder.folders = take_folders(stream);
    return folder;
  });
}

int add_node(vtkDataAssembly* assembly, int parent, const std::string& node_name, const std::string& label) {
  const int node = assembly->AddNode(node_name.c_str(), parent);
  assembly->SetAttribute(node, kLabel, label.c_str());
  return node;
}

// `name` reduced to the characters allowed in a node name, "_" if none are left.
std::string node_name_of(const std::string& name) {
  return vtkDataAssembly::MakeValidNodeName(name.c_str());
}

// The same for a part, followed by its number if nothing is left or a sibling has the name. Adds it to
// `siblings`.
std::string node_name_of(const PartInfo& part, std::set<std::string>& siblings) {
  const std::string number = std::to_string(part.number);
  std::string name = node_name_of(part.name);
  if (name == "_") name += number;
  while (!siblings.insert(name).second) name += "_" + number;
  return name;
}

// Adds nodes for the folders and their parts; `indices` maps part numbers to positions in the collection.
void add_folders(vtkDataAssembly* assembly, int parent, const std::vector<host::PartFolder>& folders,
                 const std::map<int, unsigned>& indices, const std::vector<PartInfo>& parts) {
  for (const host::PartFolder& folder : folders) {
    const int node = add_node(assembly, parent, node_name_of(folder.name), folder.name);
    add_folders(assembly, node, folder.folders, indices, parts);
    std::set<std::string> names;
    for (const host::PartFolder& inside : folder.folders) names.insert(node_name_of(inside.name));
    for (const int part : folder.parts) {
      const unsigned index = indices.at(part);
      const std::string name = node_name_of(parts[index], names);
      assembly->AddDataSetIndex(add_node(assembly, node, name, parts[index].name), index);
    }
  }
}

}  // namespace

void put(vtkMultiProcessStream& stream, const StepPlan& plan) {
  put(stream, plan.parts);
  put(stream, plan.folders);
  put_all(stream, plan.variables, [&](int variable) { stream << variable; });
  stream << plan.is_other_step;
}

StepPlan take_step_plan(vtkMultiProcessStream& stream) {
  StepPlan plan;
  plan.parts = take_parts(stream);
  plan.folders = take_folders(stream);
  plan.variables = take_all(stream, [&] { return take<int>(stream); });
  stream >> plan.is_other_step;
  return plan;
}

void ShareStore::follow(StepPlan plan) {
  plan_ = std::move(plan);
  const auto is_shown = [&](int part) {
    return std::any_of(plan_.parts.begin(), plan_.parts.end(),
                       [&](const PartInfo& shown) { return shown.number == part; });
  };
  const auto is_chosen = [&](int variable) {
    return std::find(plan_.variables.begin(), plan_.variables.end(), variable) != plan_.variables.end();
  };
  std::erase_if(meshes_, [&](const auto& mesh) { return !is_shown(mesh.first); });
  std::erase_if(values_, [&](const auto& values) {
    return plan_.is_other_step || !is_shown(values.first.first) || !is_chosen(values.first.second);
  });
}

void ShareStore::clear() {
  plan_ = {};
  meshes_.clear();
  values_.clear();
}

void ShareStore::set_cells(int part, vtkdata::Cells cells) {
  meshes_[part].cells = std::move(cells);
}

void ShareStore::set_points(int part, const vtkSmartPointer<vtkPoints>& points) {
  meshes_[part].points = points;
}

void ShareStore::set_values(int part, int variable, const vtkSmartPointer<vtkDataArray>& values) {
  values_[{part, variable}] = values;
}

void ShareStore::discard(int part) {
  meshes_.erase(part);
  std::erase_if(values_, [&](const auto& values) { return values.first.first == part; });
}

vtkSmartPointer<vtkPartitionedDataSetCollection> ShareStore::collection(const DatasetInfo& info) const {
  auto collection = vtkSmartPointer<vtkPartitionedDataSetCollection>::New();
  std::map<int, unsigned> indices;
  for (const PartInfo& part : plan_.parts) {
    const unsigned index = collection->GetNumberOfPartitionedDataSets();
    indices[part.number] = index;
    vtkSmartPointer<vtkUnstructuredGrid> grid;
    const auto mesh = meshes_.find(part.number);
    if (mesh != meshes_.end() && mesh->second.points && mesh->second.cells.connectivity) {
      grid = vtkdata::make_grid(mesh->second.points, mesh->second.cells);
      for (const VariableInfo& variable : info.variables) {
        const auto values = values_.find({part.number, variable.number});
        if (values == values_.end() || !values->second) continue;
        if (variable.is_per_cell) {
          grid->GetCellData()->AddArray(values->second);
        } else {
          grid->GetPointData()->AddArray(values->second);
        }
      }
    }
    collection->SetPartition(index, 0, grid);
    collection->GetMetaData(index)->Set(vtkCompositeDataSet::NAME(), part.name.c_str());
  }
  vtkNew<vtkDataAssembly> assembly;
  assembly->SetRootNodeName(kRootName);
  add_folders(assembly, assembly->GetRootNode(), plan_.folders, indices, plan_.parts);
  collection->SetDataAssembly(assembly);

  vtkNew<vtkStringArray> labels;
  labels->SetName("Labels");
  for (const std::string& label : info.labels) labels->InsertNextValue(label);
  collection->GetFieldData()->AddArray(labels);
  return collection;
}

}  // namespace paraview
