#include "tests/parallel/comparison.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <set>
#include <sstream>

#include "host/element_slots.h"
#include "host/library.h"
#include "host/plugin_path.h"
#include "host/session.h"
#include "host/undefined_value.h"
#include "layout/series.h"
#include "tests/parallel/collected_shares.h"
#include "tests/parallel/thread_group.h"

namespace parallel_test {
namespace {

// What a host gets of a step.
struct HostPart {
  host::Part part;
  bool has_mesh = true;  // a host refuses cells without a node of the mesh
  host::Coordinates coordinates;
  std::vector<host::ElementBlock> blocks;
  std::map<int, std::vector<host::PartValues>> values;  // by variable, a component each
};

// The codes of faces and elements that a slot stands for.
bool is_of_slot(int slot, int code) {
  switch (slot) {
    case 6:
      return code == 23 || code == 133;
    case 10:
      return code == 24 || code == 134;
    case 14:
      return code == 34;
    case 18:
      return code == 35;
    case 22:
      return code == 36;
    default:
      return code == 38;
  }
}

bool same(float a, float b) {
  if (host::is_undefined(b)) b = std::nanf("");
  return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

// The host's step, taken by opening the dataset and going straight there.
std::vector<HostPart> host_step(const std::filesystem::path& file, int step) {
  const host::Library library(host::find_plugin(), host::Library::Globals::own);
  host::Session session(library,
                        {.toggles = {}, .capture_diagnostics = true, .recover_from_assertions = false});
  session.open(file);
  session.select_step(step);
  std::vector<HostPart> parts;
  for (const host::Part& part : session.parts()) {
    HostPart taken{part, true, session.coordinates(part.number), {}, {}};
    try {
      taken.blocks = session.elements(part.number);
    } catch (const host::Error&) {
      taken.has_mesh = false;
    }
    parts.push_back(std::move(taken));
  }
  for (const host::Variable& variable : session.variables()) {
    for (HostPart& part : parts) {
      for (int c = 0; c < variable.components(); ++c)
        part.values[variable.number].push_back(session.values(variable.number, part.part.number, c));
    }
  }
  return parts;
}

class Comparison {
 public:
  Comparison(const HostPart& expected, const MergedPart& got, const layout::Part& part, bool is_cylindrical,
             const std::vector<layout::Variable>& variables)
      : expected_(expected), got_(got), part_(part), is_cylindrical_(is_cylindrical), variables_(variables) {}

  std::string difference() {
    number_nodes();
    std::size_t cells = 0;
    for (const host::ElementBlock& block : expected_.blocks) {
      const std::string found = difference_in(block, cells);
      if (!found.empty()) return found;
      cells += block.size();
    }
    if (cells != got_.cells.size()) {
      return std::to_string(got_.cells.size()) + " cells instead of " + std::to_string(cells);
    }
    return difference_of_nodes();
  }

 private:
  // Which of the host's nodes (from 0) each node of the part is.
  void number_nodes() {
    const auto nodes = static_cast<int>(got_.nodes.size());
    for (int i = 0; i < nodes; ++i)
      host_node_.push_back(part_.kind == layout::PartKind::whole ? got_.nodes[static_cast<std::size_t>(i)]
                                                                 : i);
  }

  int host_node(std::int32_t node) const {
    const auto found = std::lower_bound(got_.nodes.begin(), got_.nodes.end(), node);
    return host_node_.at(static_cast<std::size_t>(found - got_.nodes.begin()));
  }

  std::string difference_in(const host::ElementBlock& block, std::size_t first_value) {
    std::size_t i = 0;
    for (const MergedCell& cell : got_.cells) {
      if (!is_of_slot(block.shape.slot, cell.code)) continue;
      if (i == block.size()) return "too many cells of slot " + std::to_string(block.shape.slot);
      const auto corners = block.element(i);
      if (corners.size() != cell.nodes.size()) return "a cell with another number of corners";
      for (std::size_t k = 0; k < corners.size(); ++k) {
        if (corners[k] - 1 != host_node(cell.nodes[k])) {
          return "corner " + std::to_string(k) + " of cell " + std::to_string(i) + " of slot " +
                 std::to_string(block.shape.slot) + " is node " +
                 std::to_string(host_node(cell.nodes[k]) + 1) + " instead of " + std::to_string(corners[k]);
        }
      }
      const int material = static_cast<int>(variables_.size());
      const auto& values = expected_.values.at(material).front();
      if (!same(cell.material, values.values()[first_value + i])) {
        return "material " + std::to_string(cell.material) + " instead of " +
               std::to_string(values.values()[first_value + i]);
      }
      ++i;
    }
    return i == block.size() ? "" : "too few cells of slot " + std::to_string(block.shape.slot);
  }

  std::string difference_of_nodes() {
    if (part_.kind != layout::PartKind::whole && got_.nodes.size() != expected_.coordinates.size()) {
      return std::to_string(got_.nodes.size()) + " nodes instead of " +
             std::to_string(expected_.coordinates.size());
    }
    for (std::size_t n = 0; n < got_.nodes.size(); ++n) {
      const auto i = static_cast<std::size_t>(host_node_[n]);
      std::array<float, 3> point = {expected_.coordinates.x()[i], expected_.coordinates.y()[i],
                                    expected_.coordinates.z()[i]};
      // The plug-in gives the whole mesh as it is stored.
      if (part_.kind == layout::PartKind::whole && is_cylindrical_) {
        const double radius = static_cast<double>(point[0]);
        const double angle = static_cast<double>(point[1]);
        point = {static_cast<float>(radius * std::cos(angle)), static_cast<float>(radius * std::sin(angle)),
                 point[2]};
      }
      for (std::size_t axis = 0; axis < 3; ++axis) {
        const float got = got_.points.at(n)[axis];
        if (!same(got, point[axis])) {
          std::ostringstream text;
          text.precision(9);
          text << "node " << got_.nodes[n] << " at " << got << " instead of " << point[axis] << " on axis "
               << axis;
          return text.str();
        }
      }
    }
    for (const layout::Variable& variable : variables_) {
      if (variable.is_material) continue;
      const std::string found = difference_of_values(variable);
      if (!found.empty()) return found;
    }
    return "";
  }

  std::string difference_of_values(const layout::Variable& variable) {
    const auto values = got_.values.find(variable.number);
    const auto components = static_cast<std::size_t>(variable.components);
    if (got_.nodes.empty()) return "";
    if (values != got_.values.end() && values->second.width != components)
      return variable.name + " has " + std::to_string(values->second.width) + " components";
    for (std::size_t c = 0; c < components; ++c) {
      const host::PartValues& expected = expected_.values.at(variable.number)[c];
      const bool is_given = expected.availability == host::Availability::given;
      if (is_given != (values != got_.values.end())) return variable.name + " is there or is not";
      if (!is_given) continue;
      for (std::size_t n = 0; n < got_.nodes.size(); ++n) {
        const float got = values->second.at(n)[c];
        const float wanted = expected.values()[static_cast<std::size_t>(host_node_[n])];
        if (!same(got, wanted))
          return variable.name + " is " + std::to_string(got) + " instead of " + std::to_string(wanted);
      }
    }
    return "";
  }

  const HostPart& expected_;
  const MergedPart& got_;
  const layout::Part& part_;
  bool is_cylindrical_;
  const std::vector<layout::Variable>& variables_;
  std::vector<int> host_node_;
};

std::string difference_of_parts(const std::vector<layout::Part>& got, const std::vector<HostPart>& expected) {
  if (got.size() != expected.size()) {
    return std::to_string(got.size()) + " parts instead of " + std::to_string(expected.size());
  }
  for (std::size_t i = 0; i < got.size(); ++i) {
    const std::string& name = expected[i].part.name;
    const bool is_whole = got[i].kind == layout::PartKind::whole;
    if (is_whole ? name != "ALL_ELEMENTS" : got[i].name.substr(0, 79) != name) {
      return "part " + got[i].name + " instead of " + name;
    }
  }
  return "";
}

// The ranks of one dataset, and what they have.
class Ranks {
 public:
  Ranks(const layout::Series& series, int count) : group_(count) {
    for (int r = 0; r < count; ++r) {
      files_.push_back(std::make_unique<parallel::FileArrays>(series.paths()));
      sinks_.push_back(std::make_unique<CollectedShares>());
      readers_.emplace_back();
    }
  }

  // Returns the problems.
  std::vector<parallel::Problem> read(const layout::StepLayout& step) {
    const std::string bytes = to_bytes(step);
    std::vector<parallel::Problem> problems;
    group_.run([&](parallel::Communicator& ranks) {
      const auto r = static_cast<std::size_t>(ranks.rank());
      const layout::StepLayout received = layout::step_layout_from(bytes);
      // A communicator lives as long as its threads; what a reader keeps does not depend on it.
      if (!readers_[r]) readers_[r] = std::make_unique<parallel::StepReader>(*files_[r]);
      readers_[r]->read(ranks, received, {ranks.rank(), ranks.size()}, *sinks_[r],
                        [](double) { return true; });
      if (r == 0) problems = readers_[r]->problems();
    });
    return problems;
  }
  std::vector<const Share*> shares(int part) const {
    std::vector<const Share*> shares;
    for (const auto& sink : sinks_) shares.push_back(&sink->shares.at(part));
    return shares;
  }

 private:
  ThreadGroup group_;
  std::vector<std::unique_ptr<parallel::FileArrays>> files_;
  std::vector<std::unique_ptr<CollectedShares>> sinks_;
  std::vector<std::unique_ptr<parallel::StepReader>> readers_;
};

std::string difference_of_step(const std::vector<HostPart>& expected, layout::Series& series, int step,
                               Ranks& ranks) {
  const std::vector<layout::Part> parts = series.parts(step);
  const std::string other_parts = difference_of_parts(parts, expected);
  if (!other_parts.empty()) return other_parts;
  std::vector<int> variables;
  for (const layout::Variable& variable : series.variables()) variables.push_back(variable.number);
  const layout::StepLayout located = series.locate(step, parts, variables);
  std::set<int> without_mesh;
  for (const parallel::Problem& problem : ranks.read(located)) {
    if (problem.reason.find("its cells name no node of the mesh") == std::string::npos) return problem.reason;
    without_mesh.insert(problem.parts.begin(), problem.parts.end());
  }
  for (std::size_t p = 0; p < parts.size(); ++p) {
    if (without_mesh.contains(parts[p].number) == expected[p].has_mesh) {
      return "part " + std::to_string(parts[p].number) + " has cells or has not";
    }
    if (!expected[p].has_mesh) continue;
    bool agrees = false;
    const int material = static_cast<int>(series.variables().size());
    const MergedPart merged = merge(ranks.shares(parts[p].number), material, agrees);
    std::string found = "the ranks' shares disagree";
    if (agrees) {
      found =
          Comparison(expected[p], merged, parts[p],
                     located.sets[static_cast<std::size_t>(parts[p].set)].is_cylindrical, series.variables())
              .difference();
    }
    if (!found.empty()) return "part " + std::to_string(parts[p].number) + ": " + found;
  }
  return "";
}

}  // namespace

std::string difference_from_plugin(const std::filesystem::path& file, const std::vector<Way>& ways) {
  layout::Series series(file.string(), false);
  const int steps = static_cast<int>(series.paths().size());
  std::vector<std::vector<HostPart>> expected;
  for (int step = 0; step < steps; ++step) expected.push_back(host_step(file, step));
  for (const Way way : ways) {
    Ranks group(series, way.ranks);
    for (int i = 0; i < steps; ++i) {
      const int step = way.is_backwards ? steps - 1 - i : i;
      const std::string found =
          difference_of_step(expected[static_cast<std::size_t>(step)], series, step, group);
      if (found.empty()) continue;
      return "on " + std::to_string(way.ranks) + " ranks" + (way.is_backwards ? " backwards" : "") +
             ", step " + std::to_string(step) + ": " + found;
    }
  }
  return "";
}

}  // namespace parallel_test
