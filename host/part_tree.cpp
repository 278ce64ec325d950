#include "host/part_tree.h"

#include <map>
#include <numeric>

#include "host/text_encoding.h"

namespace host {
namespace {

// The group of each surface that is in one, by name.
std::map<std::string, std::size_t> groups_of_surfaces(const std::vector<PartGroup>& groups) {
  std::map<std::string, std::size_t> found;
  for (std::size_t i = 0; i < groups.size(); ++i) {
    for (const std::string& part : groups[i].parts) found.emplace(part, i);
  }
  return found;
}

}  // namespace

std::vector<PartFolder> make_part_tree(const std::vector<Part>& parts, const std::vector<PartGroup>& groups,
                                       const std::vector<int>& chosen) {
  const std::map<std::string, std::size_t> group_of = groups_of_surfaces(groups);
  PartFolder surfaces{kSurfaces, {}, {}};
  PartFolder volumes{kVolumes, {}, {}};
  PartFolder whole{kWholeMesh, {}, {}};
  for (const PartGroup& group : groups) surfaces.folders.push_back({to_utf8(group.name), {}, {}});
  for (const int number : chosen) {
    const Part& part = parts.at(static_cast<std::size_t>(number) - 1);
    if (part.kind == PartKind::volume) {
      volumes.parts.push_back(number);
    } else if (part.kind == PartKind::whole) {
      whole.parts.push_back(number);
    } else if (const auto group = group_of.find(part.name); group != group_of.end()) {
      surfaces.folders[group->second].parts.push_back(number);
    } else {
      surfaces.parts.push_back(number);
    }
  }
  std::erase_if(surfaces.folders, [](const PartFolder& folder) { return folder.empty(); });
  std::vector<PartFolder> tree{std::move(surfaces), std::move(volumes), std::move(whole)};
  std::erase_if(tree, [](const PartFolder& folder) { return folder.empty(); });
  return tree;
}

std::vector<PartFolder> make_part_tree(Session& session, const std::vector<int>& chosen) {
  return make_part_tree(session.parts(), session.metadata().groups, chosen);
}

std::vector<PartFolder> make_part_tree(Session& session) {
  std::vector<int> all(session.parts().size());
  std::iota(all.begin(), all.end(), 1);
  return make_part_tree(session, all);
}

}  // namespace host
