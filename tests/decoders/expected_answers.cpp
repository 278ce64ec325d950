#include "tests/decoders/expected_answers.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <utility>

#include "tests/decoders/expected_geometry.h"
#include "tests/decoders/served_answers.h"

namespace decoders {
namespace {

constexpr std::size_t kMostDescription = 79;  // characters

struct Slot {
  int slot;
  std::int32_t element, face;  // codes
};
constexpr std::array<Slot, 6> kSlots = {
    {{6, 23, 133}, {10, 24, 134}, {14, 34, 0}, {18, 35, 0}, {22, 36, 0}, {26, 38, 0}}};

bool is_flat(std::int32_t code) {
  return code == 23 || code == 24;
}

// What a part consists of: its nodes in ascending order, and its faces or elements by slot.
struct Cell {
  std::vector<std::int32_t> nodes{};  // those that the lists have
  int count = 0;                      // of nodes that it should have
  std::int64_t element = -1;          // whose material it has
  bool has_material = true;
};

struct ExpectedPart {
  std::size_t set = 0;
  bool is_whole = false;
  std::string name{};
  std::vector<std::int32_t> nodes{};
  std::map<int, std::vector<Cell>> cells{};
};

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

// The names of the quantities of a dataset with the labels of their first appearance.
class Catalogue {
 public:
  explicit Catalogue(const std::vector<DecodedFile>& files) {
    for (const DecodedFile& file : files) {
      for (const DecodedRegionSet& set : file.region_sets) add(set.scalars, scalars_);
    }
    for (const DecodedFile& file : files) {
      for (const DecodedRegionSet& set : file.region_sets) add(set.vectors, vectors_);
    }
  }

  const std::vector<std::pair<std::string, std::string>>& scalars() const { return scalars_; }
  const std::vector<std::pair<std::string, std::string>>& vectors() const { return vectors_; }

  std::vector<std::string> descriptions() const {
    std::vector<std::string> texts;
    for (const auto* list : {&scalars_, &vectors_}) {
      for (const auto& [name, label] : *list)
        texts.push_back((label + " (" + name + ")").substr(0, kMostDescription));
    }
    texts.emplace_back("MatOfElements");
    return texts;
  }

 private:
  using List = std::vector<std::pair<std::string, std::string>>;

  static void add(const std::vector<DecodedQuantity>& quantities, List& list) {
    for (const DecodedQuantity& quantity : quantities) {
      const bool is_known = std::any_of(list.begin(), list.end(),
                                        [&](const auto& entry) { return entry.first == quantity.name; });
      if (!is_known) list.emplace_back(quantity.name, quantity.label);
    }
  }

  List scalars_, vectors_;
};

// A quantity that the plug-in keeps: by its name alone, until another step or set is selected.
struct Kept {
  std::string name{};
  const DecodedQuantity* quantity = nullptr;
};

class Expecting {
 public:
  explicit Expecting(const std::vector<DecodedFile>& files)
      : files_(files),
        catalogue_(files),
        geometry_(files.front().region_sets.size()),
        loaded_(geometry_.size()) {
    for (std::size_t g = 0; g < geometry_.size(); ++g) load(0, g);
  }

  Answers answers() {
    std::vector<std::size_t> geometry_files;
    const bool is_transient =
        std::any_of(files_.begin(), files_.end(), [](const DecodedFile& file) { return file.time > 0.0; });
    for (std::size_t i = 0; i < files_.size(); ++i) {
      const float time =
          is_transient ? static_cast<float>(files_[i].time) : static_cast<float>(files_[i].cycle);
      answers_.times[1].push_back(time);
      if (!has_geometry(files_[i])) continue;
      answers_.times[0].push_back(time);
      geometry_files.push_back(i);
    }
    answers_.changing_geometry = geometry_files.size() == 1 ? 0 : has_overset() ? 2 : 1;
    answers_.variables = catalogue_.descriptions();
    for (std::size_t step = 0; step < files_.size(); ++step) {
      go_to(geometry_files[std::min(step, geometry_files.size() - 1)]);
      answers_.steps.push_back(answers_at(step));
    }
    return std::move(answers_);
  }

 private:
  static bool has_geometry(const DecodedFile& file) {
    return std::any_of(file.region_sets.begin(), file.region_sets.end(),
                       [](const DecodedRegionSet& set) { return set.counts_as_mesh || set.motion; });
  }

  bool has_overset() const {
    for (const DecodedFile& file : files_) {
      for (const DecodedRegionSet& set : file.region_sets) {
        for (const DecodedQuantity& scalar : set.scalars) {
          if (scalar.name.starts_with("@BNODE")) return true;
        }
      }
    }
    return false;
  }

  void load(std::size_t file, std::size_t g) {
    geometry_[g].load(files_[file].region_sets[g], files_[file].bias);
    loaded_[g] = file;
  }

  // The nearest file at or before this one that has nodes, or seems to have.
  std::size_t with_nodes(std::size_t file, std::size_t g) const {
    while (file > 0 && !files_[file].region_sets[g].counts_as_mesh) --file;
    return file;
  }

  std::size_t of_cycle(std::int32_t cycle) const {
    const auto found = std::find_if(files_.begin(), files_.end(),
                                    [&](const DecodedFile& file) { return file.cycle == cycle; });
    return static_cast<std::size_t>(found - files_.begin());
  }

  void go_to(std::size_t file) {
    const bool any_moves = std::any_of(files_.begin(), files_.end(), [](const DecodedFile& other) {
      return std::any_of(other.region_sets.begin(), other.region_sets.end(),
                         [](const DecodedRegionSet& set) { return set.motion.has_value(); });
    });
    for (std::size_t g = 0; g < geometry_.size(); ++g) {
      const DecodedRegionSet& set = files_[file].region_sets[g];
      const std::size_t reference = set.motion ? of_cycle(set.motion->base_cycle) : with_nodes(file, g);
      if ((any_moves && reference == file) || set.motion || loaded_[g] != reference) {
        if (!files_[reference].region_sets[g].counts_as_mesh) load(with_nodes(reference, g), g);
        load(reference, g);
      }
      if (set.motion) geometry_[g].move(*set.motion);
    }
  }

  std::vector<ExpectedPart> parts() const {
    std::vector<ExpectedPart> parts;
    const auto add = [&](std::size_t g, ExpectedPart part) {
      part.set = g;
      parts.push_back(std::move(part));
    };
    for (std::size_t g = 0; g < geometry_.size(); ++g) {
      for (const DecodedSurface& surface : geometry_[g].surfaces) add(g, surface_part(geometry_[g], surface));
    }
    for (std::size_t g = 0; g < geometry_.size(); ++g) {
      for (const DecodedVolume& volume : geometry_[g].volumes) add(g, volume_part(geometry_[g], volume));
    }
    for (std::size_t g = 0; g < geometry_.size(); ++g) add(g, whole_part(geometry_[g]));
    if (parts.size() > kMostParts) parts.resize(kMostParts);
    return parts;
  }

  StepAnswers answers_at(std::size_t step) {
    StepAnswers answers;
    const std::vector<ExpectedPart> all = parts();
    for (const ExpectedPart& part : all) answers.parts.push_back(answers_of(geometry_[part.set], part));
    const std::size_t scalars = catalogue_.scalars().size();
    const std::size_t vectors = catalogue_.vectors().size();
    kept_ = {};
    for (std::size_t v = 0; v < std::min<std::size_t>(scalars + vectors + 1, kMostVariables); ++v) {
      for (std::size_t p = 0; p < all.size(); ++p) {
        if (v == scalars + vectors) {
          add_materials(answers, v, p, all[p]);
        } else if (v < scalars) {
          answers.values[{v, p, 0}] = values(step, all[p], false, catalogue_.scalars()[v].first, 0);
        } else {
          for (std::size_t c = 0; c < 3; ++c) {
            answers.values[{v, p, c}] =
                values(step, all[p], true, catalogue_.vectors()[v - scalars].first, c);
          }
        }
      }
    }
    return answers;
  }

  void add_materials(StepAnswers& answers, std::size_t v, std::size_t p, const ExpectedPart& part) const {
    const std::vector<std::int32_t>& materials = geometry_[part.set].materials;
    for (const auto& [slot, cells] : part.cells) {
      ValueAnswers& values = answers.values[{v, p, static_cast<std::size_t>(slot)}];
      for (const Cell& cell : cells) {
        const bool has_material =
            cell.has_material && cell.element >= 0 && cell.element < std::ssize(materials);
        values.values.push_back(has_material
                                    ? static_cast<float>(materials[static_cast<std::size_t>(cell.element)])
                                    : kUndefined);
      }
    }
  }

  ValueAnswers values(std::size_t step, const ExpectedPart& part, bool is_vector, const std::string& name,
                      std::size_t component) {
    ValueAnswers answers{.values = std::vector<float>(part.nodes.size())};
    if (part.nodes.empty()) return answers;
    const DecodedFile& file = files_[step];
    const DecodedRegionSet& set = file.region_sets[part.set];
    const std::vector<DecodedQuantity>& list = is_vector ? set.vectors : set.scalars;
    const auto found = std::find_if(list.begin(), list.end(),
                                    [&](const DecodedQuantity& quantity) { return quantity.name == name; });
    if (found == list.end()) {
      answers.result = 2;
      return answers;
    }
    Kept& kept = kept_.at(is_vector ? 1 : 0);
    if (name.empty() || kept.name != name) kept = {name, &*found};
    const Reals& reals = kept.quantity->components.at(component);
    // Above 99 % of the marker, compared in single precision, a value is undefined.
    const double limit =
        0.99 * (reals.is_single ? static_cast<double>(file.undefined_single) : file.undefined_double);
    for (std::size_t k = 0; k < part.nodes.size(); ++k) {
      const auto node = static_cast<std::size_t>(part.nodes[k]);
      float value = kUndefined;
      if (node < reals.values.size()) {
        value = static_cast<float>(reals.values[node]);
        if (static_cast<double>(value) > limit) value = kUndefined;
      }
      answers.values[k] = value;
    }
    return answers;
  }

  const std::vector<DecodedFile>& files_;
  Catalogue catalogue_;
  std::vector<ExpectedGeometry> geometry_;
  std::vector<std::size_t> loaded_;  // the file of each region set's geometry
  std::array<Kept, 2> kept_{};       // a scalar and a vector
  Answers answers_;
};

}  // namespace

Answers expected_answers(const std::vector<DecodedFile>& files) {
  return Expecting(files).answers();
}

}  // namespace decoders
