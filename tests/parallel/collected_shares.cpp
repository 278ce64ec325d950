#include "tests/parallel/collected_shares.h"

#include <cstring>

#include "format/element_codes.h"

namespace parallel_test {
namespace {

bool same_bits(const std::vector<float>& a, const std::vector<float>& b) {
  return a.size() == b.size() &&
         (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0);
}

std::size_t corners_of(int code) {
  const int of_element = fld::nodes_of_element(code);
  return static_cast<std::size_t>(of_element > 0 ? of_element : fld::nodes_of_face(code));
}

MergedNode node_of(const Share& share, std::size_t i, int material) {
  MergedNode node;
  node.point.assign(share.points.begin() + static_cast<std::ptrdiff_t>(3 * i),
                    share.points.begin() + static_cast<std::ptrdiff_t>(3 * i + 3));
  for (const auto& [variable, values] : share.values) {
    if (variable == material) continue;
    const std::size_t width = share.nodes.empty() ? 0 : values.size() / share.nodes.size();
    node.values[variable].assign(values.begin() + static_cast<std::ptrdiff_t>(width * i),
                                 values.begin() + static_cast<std::ptrdiff_t>(width * (i + 1)));
  }
  return node;
}

}  // namespace

MergedPart merge(const std::vector<const Share*>& shares, int material, bool& agrees) {
  MergedPart part;
  agrees = true;
  for (const Share* share : shares) {
    if (share->points.size() != 3 * share->nodes.size()) {
      agrees = false;
      return part;
    }
    for (std::size_t i = 0; i < share->nodes.size(); ++i) {
      const MergedNode node = node_of(*share, i, material);
      const auto [found, is_new] = part.nodes.emplace(share->nodes[i], node);
      if (is_new) continue;
      agrees = agrees && same_bits(found->second.point, node.point);
      for (const auto& [variable, values] : node.values)
        agrees = agrees && same_bits(found->second.values[variable], values);
    }
    const auto materials = share->values.find(material);
    std::size_t next = 0;
    const std::size_t own = share->codes.size() - static_cast<std::size_t>(share->ghosts);
    for (std::size_t c = 0; c < own; ++c) {
      MergedCell cell;
      cell.code = share->codes[c];
      for (std::size_t k = corners_of(cell.code); k > 0; --k)
        cell.nodes.push_back(share->nodes.at(static_cast<std::size_t>(share->corners.at(next++))));
      if (materials != share->values.end()) cell.material = materials->second.at(c);
      part.cells.push_back(cell);
    }
  }
  return part;
}

}  // namespace parallel_test
