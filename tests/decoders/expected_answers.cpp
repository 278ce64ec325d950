#include "tests/decoders/expected_answers.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "tests/decoders/expected_geometry.h"
#include "tests/decoders/expected_parts.h"
#include "tests/decoders/served_answers.h"

namespace decoders {
namespace {

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
