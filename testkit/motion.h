// The motion of volume regions in one file ("LS_ALE").
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "testkit/section.h"
#include "testkit/vec3.h"

namespace testkit {

struct Action {
  std::string kind{};
  // One block each: points and vectors of three values, single values.
  std::vector<std::vector<double>> items{};
  std::optional<std::int32_t> item_count{};  // written instead of the number of items

  // Angle in radians.
  static Action rotate(const Vec3& centre, const Vec3& axis, double angle);
  static Action translate(const Vec3& displacement);
  static Action scale(const Vec3& centre, const Vec3& factors);
  // The affine map from the four source points to the four target points.
  static Action four_points(const std::array<Vec3, 4>& source, const std::array<Vec3, 4>& target);
};

struct MovingRegion {
  std::vector<std::string> names{};  // of the volume regions that move together
  std::vector<Action> actions{};     // applied in this order
};

struct Motion {
  std::int32_t base_cycle = 0;  // of the file whose geometry the motion starts from
  std::vector<MovingRegion> regions{};
  Precision precision = Precision::kDouble;
  std::size_t name_length = 0;  // of names and kinds; 0: as long as the longest
};

// Blocks: 0 name length, 1 base cycle, 2 region count; then per region: name count, the names, action count;
// then per action: kind, item count, the items.
Section motion_section(const Motion& motion);

}  // namespace testkit
