// The parts of a session's dataset, their coordinates and elements.
#include <atomic>
#include <string>

#include "host/call_arrays.h"
#include "host/error.h"
#include "host/part_kinds.h"
#include "host/session.h"
#include "host/thread_ranges.h"
#include "host/tuples.h"

namespace host {
namespace {

// A pointer to each row of so many entries.
LargeArray<int*> rows_of(LargeArray<int>& entries, std::size_t width) {
  LargeArray<int*> rows(entries.size() / width);
  for_ranges(rows.size(), sizeof(int*), [&](std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) rows[i] = entries.data() + i * width;
  });
  return rows;
}

}  // namespace

void Session::ask_parts() {
  building_parts_ = true;
  const auto count = static_cast<std::size_t>(guarded_.call_checked(entry_.get_number_of_model_parts));
  PartArrays<PooledStorage> arrays(count);
  arrays.fill(entry_, [this](const auto& entry_point, auto... arguments) {
    return guarded_.call_checked(entry_point, arguments...);
  });
  std::vector<Part> parts(count);
  for (std::size_t i = 0; i < count; ++i) {
    Part& part = parts[i];
    part.number = static_cast<int>(i) + 1;
    part.name = arrays.descriptions.text(i);
    part.nodes = arrays.nodes[i];
    bool is_sound = part.nodes >= 0;
    for (std::size_t slot = 0; slot < kElementSlots; ++slot) {
      part.elements[slot] = arrays.elements[i][slot];
      is_sound = is_sound && part.elements[slot] >= 0;
    }
    if (!is_sound) {
      throw guarded_.error(
          entry_.get_gold_part_build_info.name,
          "part " + std::to_string(part.number) + " has a negative count of nodes or elements");
    }
  }
  region_sets_ = set_part_kinds(parts);
  parts_ = std::move(parts);
}

const Part& Session::part(int number) const {
  require_open();
  if (number < 1 || number > static_cast<int>(parts_.size())) {
    throw Error("part " + std::to_string(number) + " is outside 1 to " + std::to_string(parts_.size()));
  }
  return parts_[static_cast<std::size_t>(number) - 1];
}

Coordinates Session::coordinates(int part) {
  const auto nodes = static_cast<std::size_t>(this->part(part).nodes);
  building_parts_ = true;
  Coordinates coordinates;
  std::array<float*, 3> rows{};
  for (std::size_t axis = 0; axis < 3; ++axis) {
    coordinates.axes[axis] = HostArray(nodes);
    rows[axis] = coordinates.axes[axis].entries();
  }
  guarded_.call_checked(entry_.get_part_coords, part, rows.data());
  return coordinates;
}

LargeArray<float> Session::points(int part) {
  const Coordinates asked = coordinates(part);
  LargeArray<float> xyz(asked.size() * 3);
  put_points(asked, xyz.data());
  return xyz;
}

std::vector<ElementBlock> Session::elements(int part, int first_node) {
  const Part& asked = this->part(part);
  building_parts_ = true;
  std::vector<ElementBlock> blocks;
  for (int slot = 0; slot < kElementSlots; ++slot) {
    const auto count = static_cast<std::size_t>(asked.elements[static_cast<std::size_t>(slot)]);
    if (count == 0) continue;
    const ElementShape* shape = shape_of_slot(slot);
    if (shape == nullptr) {
      throw Error("part " + std::to_string(part) + " has elements of slot " + std::to_string(slot) +
                  ", a shape that this host does not know");
    }
    const auto width = static_cast<std::size_t>(shape->nodes);
    ElementBlock block{*shape, LargeArray<int>(count * width)};
    {
      LargeArray<int*> rows = rows_of(block.nodes, width);
      guarded_.call_checked(entry_.get_part_elements_by_type, part, slot, rows.data());
    }
    check_and_renumber(asked, block, first_node);
    blocks.push_back(std::move(block));
  }
  return blocks;
}

void Session::check_and_renumber(const Part& part, ElementBlock& block, int first_node) const {
  // One pass without a branch per element. Wrong numbers may be any, so the arithmetic is unsigned.
  const auto nodes = static_cast<unsigned>(part.nodes);
  const auto is_wrong = [=](int node) {
    return static_cast<unsigned>(static_cast<unsigned>(node) - 1U >= nodes);
  };
  const auto shift = static_cast<unsigned>(first_node) - 1U;
  std::atomic<bool> found_wrong = false;
  for_ranges(block.nodes.size(), sizeof(int), [&](std::size_t begin, std::size_t end) {
    const std::span<int> range = std::span(block.nodes).subspan(begin, end - begin);
    unsigned wrong = 0;
    if (shift == 0) {
      for (const int node : range) wrong |= is_wrong(node);
    } else {
      for (int& node : range) {
        wrong |= is_wrong(node);
        node = static_cast<int>(static_cast<unsigned>(node) + shift);
      }
    }
    if (wrong != 0) found_wrong = true;
  });
  if (found_wrong) {
    throw guarded_.error(entry_.get_part_elements_by_type.name,
                         "part " + std::to_string(part.number) + " has a " + std::string(block.shape.name) +
                             " with a node number outside 1 to " + std::to_string(part.nodes));
  }
}

// Tells the reader, once, that no more coordinates and elements will be requested.
void Session::finish_parts() {
  if (!building_parts_) return;
  building_parts_ = false;
  if (entry_.stop_part_building) guarded_.call(entry_.stop_part_building);
}

}  // namespace host
