#include "parallel/step_reader.h"

#include <algorithm>
#include <memory>
#include <optional>

#include "parallel/step_keys.h"

namespace parallel {
namespace {

const layout::SetMesh& mesh_of(const layout::StepLayout& step, const layout::PartLists& part) {
  return step.sets[static_cast<std::size_t>(part.set)];
}

}  // namespace

// What the parts of a region set are read from, made when it is first needed. What failed once fails again,
// without reading.
struct StepReader::SetBlocks {
  template <typename Block, typename Make>
  static Block& get(std::optional<Block>& block, std::string& failure, Make make) {
    if (!failure.empty()) throw RankError(failure);
    try {
      if (!block) block.emplace(make());
    } catch (const RankError& error) {
      failure = error.what();
      throw;
    }
    return *block;
  }

  std::optional<ElementBlock> elements;
  std::string no_elements;
  std::optional<Array<float>> coordinates;
  std::string no_coordinates;
  std::optional<MaterialBlock> materials;
  std::string no_materials;
  std::optional<Array<float>> values;
  std::string no_values;
};

void StepReader::keep_coordinates(bool keep) {
  keeps_coordinates_ = keep;
  if (!keep) base_coordinates_.clear();
}

bool StepReader::goes_on(Task& task) {
  const bool answer = task.progress(std::min(task.done++ / task.items, 1.0));
  return decide(task.ranks, answer);
}

template <typename Work>
bool StepReader::attempt(int part, int variable, Work work) {
  try {
    work();
    return true;
  } catch (const RankError& error) {
    const auto same = std::find_if(problems_.begin(), problems_.end(), [&](const Problem& problem) {
      return problem.reason == error.what() && problem.variable == variable;
    });
    if (same != problems_.end()) {
      same->parts.push_back(part);
    } else {
      problems_.push_back({error.what(), variable, {part}});
    }
    return false;
  }
}

void StepReader::drop_part(const Task& task, int part) {
  task.sink.drop_part(part);
  states_.erase(part);
}

// Lets go of parts and variables that are not asked for, and of values that are not the step's. Meshes stay
// until their new ones are there, so that what did not change stays the same object.
void StepReader::drop_what_is_old(const Task& task) {
  std::map<int, const layout::PartLists*> wanted;
  for (const layout::PartLists& part : task.step.parts) wanted[part.number] = &part;
  std::vector<int> gone;
  for (const auto& [number, state] : states_) {
    if (!wanted.contains(number)) gone.push_back(number);
  }
  for (const int number : gone) drop_part(task, number);
  for (auto& [number, state] : states_) {
    const layout::PartLists& part = *wanted[number];
    const layout::SetMesh& mesh = mesh_of(task.step, part);
    std::map<int, std::string> kept;
    for (const layout::VariableValues& variable : task.step.variables) {
      const auto had = state.value_keys.find(variable.number);
      if (had == state.value_keys.end()) continue;
      const std::string key = values_key(mesh, part, variable, mesh_key(mesh, part, task.share));
      if (had->second == key) kept[variable.number] = key;
    }
    for (const auto& [variable, key] : state.value_keys) {
      if (!kept.contains(variable)) task.sink.drop_values(number, variable);
    }
    state.value_keys = std::move(kept);
  }
}

bool StepReader::read(Communicator& ranks, const layout::StepLayout& step, ShareNumber share, ShareSink& sink,
                      const Progress& progress) {
  problems_.clear();
  Task task{ranks, step, share, sink, progress};
  task.items = static_cast<double>(std::max<std::size_t>(step.parts.size() * (step.variables.size() + 1), 1));
  drop_what_is_old(task);
  bool complete = read_meshes(task);
  for (std::size_t v = 0; complete && v < step.variables.size(); ++v)
    complete = read_variable(task, step.variables[v]);
  files_.close();
  return complete;
}

bool StepReader::read_meshes(Task& task) {
  bool complete = true;
  for (int set = 0; set < static_cast<int>(task.step.sets.size()); ++set) {
    if (complete) complete = read_set(task, set);
  }
  // What was not reached, or could not be read, is not shown with the mesh of another step.
  for (const layout::PartLists& part : task.step.parts) {
    const auto state = states_.find(part.number);
    const layout::SetMesh& mesh = mesh_of(task.step, part);
    const std::string key = points_key(mesh, mesh_key(mesh, part, task.share));
    if (state != states_.end() && state->second.points_key != key) drop_part(task, part.number);
  }
  return complete;
}

bool StepReader::lacks_mesh(const Task& task, const layout::PartLists& part) const {
  const auto state = states_.find(part.number);
  return state == states_.end() ||
         state->second.mesh_key != mesh_key(mesh_of(task.step, part), part, task.share);
}

bool StepReader::lacks_values(const layout::PartLists& part, const layout::VariableValues& variable) const {
  const auto state = states_.find(part.number);
  return state != states_.end() && !state->second.value_keys.contains(variable.number);
}

bool StepReader::lacks_moved_nodes(const layout::SetMesh& mesh, int set) const {
  if (mesh.motion.empty()) return false;
  const auto known = moved_.find(set);
  return known == moved_.end() || known->second.first != motion_key(mesh);
}

bool StepReader::read_set(Task& task, int set) {
  const layout::SetMesh& mesh = task.step.sets[static_cast<std::size_t>(set)];
  SetBlocks blocks;
  bool complete = true;
  // The last part that asks for elements, unless a motion does so behind it.
  const layout::PartLists* last_user = nullptr;
  if (!lacks_moved_nodes(mesh, set)) {
    for (const layout::PartLists& part : task.step.parts) {
      if (part.set == set && part.kind != layout::PartKind::surface && lacks_mesh(task, part))
        last_user = &part;
    }
  }
  std::vector<const layout::PartLists*> with_mesh;
  for (const layout::PartLists& part : task.step.parts) {
    if (part.set != set || !complete) continue;
    complete = goes_on(task);
    if (!complete) break;
    if (!lacks_mesh(task, part) ||
        attempt(part.number, 0, [&] { read_mesh(task, part, blocks, &part == last_user); })) {
      with_mesh.push_back(&part);
    } else {
      drop_part(task, part.number);
    }
  }
  const auto needs_points = [&](const layout::PartLists* part) {
    return states_.at(part->number).points_key != points_key(mesh, mesh_key(mesh, *part, task.share));
  };
  std::erase_if(with_mesh, [&](const layout::PartLists* part) { return !needs_points(part); });
  if (with_mesh.empty()) return complete;
  // The elements are needed no more, unless they tell which nodes move.
  if (lacks_moved_nodes(mesh, set)) {
    auto& [found_from, nodes] = moved_[set];
    found_from.clear();
    try {
      ElementBlock& elements = SetBlocks::get(blocks.elements, blocks.no_elements,
                                              [&] { return ElementBlock(task.ranks, files_, mesh); });
      nodes = find_moved_nodes(task.ranks, files_, mesh, elements);
      found_from = motion_key(mesh);
    } catch (const RankError& error) {
      blocks.no_coordinates = error.what();
    }
  }
  blocks.elements.reset();
  for (const layout::PartLists* part : with_mesh) {
    const bool is_last = part == with_mesh.back();
    if (!attempt(part->number, 0, [&] { read_points(task, *part, blocks, is_last); }))
      drop_part(task, part->number);
  }
  return complete;
}

void StepReader::read_mesh(const Task& task, const layout::PartLists& part, SetBlocks& blocks, bool is_last) {
  const layout::SetMesh& mesh = mesh_of(task.step, part);
  ElementBlock* elements = nullptr;
  if (part.kind != layout::PartKind::surface) {
    elements = &SetBlocks::get(blocks.elements, blocks.no_elements,
                               [&] { return ElementBlock(task.ranks, files_, mesh); });
  }
  PartShare made = make_share(task.ranks, files_, mesh, part, task.share, elements, is_last);
  NodeRequest nodes(task.ranks, Partition(mesh.node_count, task.ranks.size()), made.nodes.runs);
  together(task.ranks, [&] { task.sink.set_mesh(part.number, std::move(made.cells), made.nodes); });
  PartState& state = states_[part.number];
  state = {};
  state.mesh_key = mesh_key(mesh, part, task.share);
  state.nodes = std::move(nodes);
  state.entry_codes = std::move(made.entry_codes);
  state.elements = std::move(made.elements);
  state.ghosts = std::move(made.ghosts);
}

void StepReader::read_points(const Task& task, const layout::PartLists& part, SetBlocks& blocks,
                             bool is_last) {
  const layout::SetMesh& mesh = mesh_of(task.step, part);
  Array<float>& coordinates = SetBlocks::get(blocks.coordinates, blocks.no_coordinates, [&] {
    static const MovedNodes none;
    return read_coordinates(task.ranks, files_, mesh, mesh.motion.empty() ? none : moved_[part.set].second,
                            keeps_coordinates_ ? &base_coordinates_[part.set] : nullptr);
  });
  PartState& state = states_.at(part.number);
  state.points_key.clear();
  Array<float> points = state.nodes.fetch(task.ranks, coordinates, 3, is_last);
  together(task.ranks, [&] { task.sink.set_points(part.number, std::move(points)); });
  state.points_key = points_key(mesh, state.mesh_key);
}

bool StepReader::read_variable(Task& task, const layout::VariableValues& variable) {
  for (int set = 0; set < static_cast<int>(task.step.sets.size()); ++set) {
    SetBlocks blocks;
    if (!variable.is_material) blocks.no_values = variable.sets[static_cast<std::size_t>(set)].problem;
    const layout::PartLists* last = nullptr;
    for (const layout::PartLists& part : task.step.parts) {
      if (part.set == set && lacks_values(part, variable)) last = &part;
    }
    for (const layout::PartLists& part : task.step.parts) {
      if (part.set != set) continue;
      if (!goes_on(task)) return false;
      if (!lacks_values(part, variable)) continue;
      attempt(part.number, variable.number,
              [&] { read_part_values(task, part, variable, blocks, &part == last); });
    }
  }
  return true;
}

void StepReader::read_part_values(const Task& task, const layout::PartLists& part,
                                  const layout::VariableValues& variable, SetBlocks& blocks, bool is_last) {
  const layout::SetMesh& mesh = mesh_of(task.step, part);
  PartState& state = states_.at(part.number);
  Array<float> values;
  if (variable.is_material) {
    const MaterialBlock& materials = SetBlocks::get(blocks.materials, blocks.no_materials,
                                                    [&] { return MaterialBlock(task.ranks, files_, mesh); });
    values = share_materials(task.ranks, files_, mesh, part, task.share, state.entry_codes, state.elements,
                             materials);
    values = state.ghosts.extend(task.ranks, std::move(values));
  } else {
    const layout::SetValues& where = variable.sets[static_cast<std::size_t>(part.set)];
    if (!blocks.no_values.empty()) throw RankError(blocks.no_values);
    if (where.components[0].exists()) {
      Array<float>& block = SetBlocks::get(blocks.values, blocks.no_values, [&] {
        return read_values(task.ranks, files_, mesh, where, variable.components);
      });
      values = state.nodes.fetch(task.ranks, block, variable.components, is_last);
    } else {
      // The sink knows how many there would be.
      state.value_keys[variable.number] = values_key(mesh, part, variable, state.mesh_key);
      return;
    }
  }
  together(task.ranks, [&] {
    task.sink.set_values(part.number, variable.number, variable.components, std::move(values));
  });
  state.value_keys[variable.number] = values_key(mesh, part, variable, state.mesh_key);
}

}  // namespace parallel
