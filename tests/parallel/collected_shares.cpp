#include "tests/parallel/collected_shares.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "format/element_codes.h"

namespace parallel_test {
namespace {

std::size_t corners_of(int code) {
  const int of_element = fld::nodes_of_element(code);
  return static_cast<std::size_t>(of_element > 0 ? of_element : fld::nodes_of_face(code));
}

bool same_bits(std::span<const float> a, std::span<const float> b) {
  return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size_bytes()) == 0);
}

// Where each node of the share stands among the part's.
std::vector<std::size_t> places_of(const Share& share, const std::vector<std::int32_t>& nodes) {
  std::vector<std::size_t> places;
  places.reserve(share.nodes.size());
  for (const std::int32_t node : share.nodes) {
    places.push_back(
        static_cast<std::size_t>(std::lower_bound(nodes.begin(), nodes.end(), node) - nodes.begin()));
  }
  return places;
}

// Takes one array of all shares over; returns whether the shares agree about the nodes that several have.
bool merge_values(const std::vector<std::span<const float>>& shares,
                  const std::vector<std::vector<std::size_t>>& places, std::size_t nodes,
                  MergedValues& merged) {
  for (std::size_t s = 0; s < shares.size(); ++s)
    if (!places[s].empty()) merged.width = shares[s].size() / places[s].size();
  merged.values.resize(merged.width * nodes);
  std::vector<bool> is_known(nodes, false);
  for (std::size_t s = 0; s < shares.size(); ++s) {
    if (shares[s].size() != merged.width * places[s].size()) return false;
    for (std::size_t i = 0; i < places[s].size(); ++i) {
      const std::size_t place = places[s][i];
      const std::span<const float> given = shares[s].subspan(merged.width * i, merged.width);
      if (is_known[place] && !same_bits(given, merged.at(place))) return false;
      is_known[place] = true;
      std::copy(given.begin(), given.end(), merged.values.data() + merged.width * place);
    }
  }
  return true;
}

void append_cells(const Share& share, int material, std::vector<MergedCell>& cells) {
  const auto materials = share.values.find(material);
  std::size_t next = 0;
  const std::size_t own = share.codes.size() - static_cast<std::size_t>(share.ghosts);
  for (std::size_t c = 0; c < own; ++c) {
    MergedCell cell;
    cell.code = share.codes[c];
    cell.nodes.reserve(corners_of(cell.code));
    for (std::size_t k = corners_of(cell.code); k > 0; --k)
      cell.nodes.push_back(share.nodes.at(static_cast<std::size_t>(share.corners.at(next++))));
    if (materials != share.values.end()) cell.material = materials->second.at(c);
    cells.push_back(std::move(cell));
  }
}

}  // namespace

MergedPart merge(const std::vector<const Share*>& shares, int material, bool& agrees) {
  MergedPart part;
  for (const Share* share : shares)
    part.nodes.insert(part.nodes.end(), share->nodes.begin(), share->nodes.end());
  std::sort(part.nodes.begin(), part.nodes.end());
  part.nodes.erase(std::unique(part.nodes.begin(), part.nodes.end()), part.nodes.end());

  std::vector<std::vector<std::size_t>> places;
  std::vector<std::span<const float>> points;
  std::map<int, std::vector<std::span<const float>>> values;
  for (const Share* share : shares) {
    places.push_back(places_of(*share, part.nodes));
    points.emplace_back(share->points);
    for (const auto& [variable, array] : share->values)
      if (variable != material) values[variable].emplace_back(array);
    append_cells(*share, material, part.cells);
  }
  agrees = merge_values(points, places, part.nodes.size(), part.points) &&
           (part.nodes.empty() || part.points.width == 3);
  for (const auto& [variable, arrays] : values) {
    // A variable that only some of the shares have.
    agrees = agrees && arrays.size() == shares.size();
    if (agrees) agrees = merge_values(arrays, places, part.nodes.size(), part.values[variable]);
  }
  return part;
}

}  // namespace parallel_test
