#include "paraview/hierarchy.h"

#include <map>
#include <set>
#include <vtkDataAssembly.h>

namespace paraview {
namespace {

// The attribute that ParaView shows in place of a node's name, whose characters are restricted.
constexpr char kLabel[] = "label";
constexpr char kRootName[] = "Parts";

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

vtkSmartPointer<vtkDataAssembly> make_hierarchy(const std::vector<PartInfo>& parts,
                                                const std::vector<host::PartFolder>& folders) {
  std::map<int, unsigned> indices;
  for (const PartInfo& part : parts) indices.emplace(part.number, static_cast<unsigned>(indices.size()));
  auto assembly = vtkSmartPointer<vtkDataAssembly>::New();
  assembly->SetRootNodeName(kRootName);
  add_folders(assembly, assembly->GetRootNode(), folders, indices, parts);
  return assembly;
}

}  // namespace paraview
