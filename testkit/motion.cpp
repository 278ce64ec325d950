#include "testkit/motion.h"

#include <algorithm>

namespace testkit {
namespace {

std::vector<double> item(const Vec3& values) {
  return {values.begin(), values.end()};
}

std::size_t length_of_names(const Motion& motion) {
  if (motion.name_length > 0) return motion.name_length;
  std::size_t length = 1;
  for (const MovingRegion& region : motion.regions) {
    for (const std::string& name : region.names) length = std::max(length, name.size());
    for (const Action& action : region.actions) length = std::max(length, action.kind.size());
  }
  return length;
}

Block count_of(std::size_t count) {
  return Block::integer(static_cast<std::int32_t>(count));
}

}  // namespace

Action Action::rotate(const Vec3& centre, const Vec3& axis, double angle) {
  return {.kind = "Rotate", .items = {item(centre), item(axis), {angle}}};
}

Action Action::translate(const Vec3& displacement) {
  return {.kind = "Translate", .items = {item(displacement)}};
}

Action Action::scale(const Vec3& centre, const Vec3& factors) {
  return {.kind = "Scale", .items = {item(centre), item(factors)}};
}

Action Action::four_points(const std::array<Vec3, 4>& source, const std::array<Vec3, 4>& target) {
  Action action{.kind = "4Points", .items = {}};
  for (const Vec3& point : source) action.items.push_back(item(point));
  for (const Vec3& point : target) action.items.push_back(item(point));
  return action;
}

Section motion_section(const Motion& motion) {
  const std::size_t length = length_of_names(motion);
  Section section;
  section.title = "LS_ALE";
  auto& blocks = section.blocks;
  blocks = {count_of(length), Block::integer(motion.base_cycle), count_of(motion.regions.size())};
  for (const MovingRegion& region : motion.regions) {
    blocks.push_back(count_of(region.names.size()));
    for (const std::string& name : region.names) blocks.push_back(Block::characters(name, length));
    blocks.push_back(count_of(region.actions.size()));
    for (const Action& action : region.actions) {
      blocks.push_back(Block::characters(action.kind, length));
      const auto true_count = static_cast<std::int32_t>(action.items.size());
      blocks.push_back(Block::integer(action.item_count.value_or(true_count)));
      for (const auto& values : action.items) blocks.push_back(Block::reals(values, motion.precision));
    }
  }
  return section;
}

}  // namespace testkit
