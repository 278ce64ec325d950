#include "tests/decoders/expected_parts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace decoders {
namespace {

struct Slot {
  int slot;
  std::int32_t element, face;  // codes
};
constexpr std::array<Slot, 6> kSlots = {
    {{6, 23, 133}, {10, 24, 134}, {14, 34, 0}, {18, 35, 0}, {22, 36, 0}, {26, 38, 0}}};

bool is_flat(std::int32_t code) {
  return code == 23 || code == 24;
}

class NodeSet {
 public:
  explicit NodeSet(const ExpectedGeometry& geometry) : geometry_(geometry), is_in_(geometry.nodes.count()) {}
  void add(const std::vector<std::int32_t>& nodes) {
    for (const std::int32_t node : nodes) {
      if (geometry_.has_node(node)) is_in_[static_cast<std::size_t>(node)] = true;
    }
  }
  std::vector<std::int32_t> all() const {
    std::vector<std::int32_t> nodes;
    for (std::size_t i = 0; i < is_in_.size(); ++i) {
      if (is_in_[i]) nodes.push_back(static_cast<std::int32_t>(i));
    }
    return nodes;
  }

 private:
  const ExpectedGeometry& geometry_;
  std::vector<bool> is_in_;
};

void add_element(const ExpectedGeometry& geometry, std::size_t element, ExpectedPart& part, NodeSet& nodes) {
  const std::int32_t type = geometry.elements.types[element];
  for (const Slot& slot : kSlots) {
    if (slot.element != type) continue;
    const std::vector<std::int32_t> corners = geometry.nodes_of(element);
    nodes.add(corners);
    part.cells[slot.slot].push_back({.nodes = corners,
                                     .count = nodes_of_element_code(type),
                                     .element = static_cast<std::int64_t>(element),
                                     .has_material = !is_flat(type)});
  }
}

void add_coordinates(const ExpectedGeometry& geometry, const ExpectedPart& part, PartAnswers& answers) {
  const bool is_cylindrical = !part.is_whole && geometry.coordinate_system == 1;
  for (const std::int32_t node : part.nodes) {
    const auto i = static_cast<std::size_t>(node);
    std::array<float, 3> p{};
    for (std::size_t axis = 0; axis < 3; ++axis)
      p.at(axis) = static_cast<float>(geometry.nodes.axes.at(axis).values[i]);
    double tolerance = geometry.tolerance[i];
    if (is_cylindrical) {
      const auto r = static_cast<double>(p[0]);
      const auto t = static_cast<double>(p[1]);
      p[0] = static_cast<float>(r * std::cos(t));
      p[1] = static_cast<float>(r * std::sin(t));
      tolerance *= 1.0 + std::abs(r);
    }
    if (tolerance != 0.0) {
      for (const float value : p) tolerance += 0x1p-22 * std::abs(static_cast<double>(value));
      if (std::isnan(tolerance)) tolerance = std::numeric_limits<double>::infinity();
    }
    for (std::size_t axis = 0; axis < 3; ++axis) answers.coordinates.at(axis).push_back(p.at(axis));
    answers.tolerance.push_back(tolerance);
  }
}

}  // namespace

ExpectedPart surface_part(const ExpectedGeometry& geometry, const DecodedSurface& surface) {
  ExpectedPart part{.name = surface.name};
  NodeSet nodes(geometry);
  std::size_t cursor = 0;
  for (std::size_t f = 0; f < surface.types.size(); ++f) {
    Cell cell{.count = nodes_of_face_code(surface.types[f]), .element = surface.links[f]};
    const auto count = static_cast<std::size_t>(cell.count);
    for (std::size_t i = cursor; i < std::min(cursor + count, surface.nodes.size()); ++i)
      cell.nodes.push_back(surface.nodes[i]);
    cursor += count;
    for (const Slot& slot : kSlots) {
      if (slot.face == 0 || slot.face != surface.types[f]) continue;
      nodes.add(cell.nodes);
      part.cells[slot.slot].push_back(std::move(cell));
      break;
    }
  }
  part.nodes = nodes.all();
  return part;
}

ExpectedPart volume_part(const ExpectedGeometry& geometry, const DecodedVolume& volume) {
  ExpectedPart part{.name = volume.name};
  NodeSet nodes(geometry);
  for (const std::int32_t element : volume.elements) {
    if (geometry.has_element(element)) add_element(geometry, static_cast<std::size_t>(element), part, nodes);
  }
  part.nodes = nodes.all();
  return part;
}

ExpectedPart whole_part(const ExpectedGeometry& geometry) {
  ExpectedPart part{.is_whole = true, .name = "ALL_ELEMENTS"};
  NodeSet nodes(geometry);
  for (std::size_t e = 0; e < geometry.elements.types.size(); ++e) add_element(geometry, e, part, nodes);
  for (std::size_t i = 0; i < geometry.nodes.count(); ++i) part.nodes.push_back(static_cast<std::int32_t>(i));
  return part;
}

PartAnswers answers_of(const ExpectedGeometry& geometry, const ExpectedPart& part) {
  PartAnswers answers{.name = part.name.substr(0, kMostDescription),
                      .nodes = static_cast<int>(part.nodes.size())};
  add_coordinates(geometry, part, answers);
  std::vector<int> local(geometry.nodes.count());
  for (std::size_t k = 0; k < part.nodes.size(); ++k)
    local[static_cast<std::size_t>(part.nodes[k])] = static_cast<int>(k) + 1;
  for (const auto& [slot, cells] : part.cells) {
    answers.elements[slot] = static_cast<int>(cells.size());
    std::vector<int>& rows = answers.rows[slot];
    for (const Cell& cell : cells) {
      for (std::size_t j = 0; j < static_cast<std::size_t>(cell.count); ++j) {
        const bool is_there = j < cell.nodes.size() && geometry.has_node(cell.nodes[j]);
        rows.push_back(is_there ? local[static_cast<std::size_t>(cell.nodes[j])] : 1);
      }
    }
  }
  return answers;
}

}  // namespace decoders
