#include "parallel/node_blocks.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "dataset/node_motion.h"
#include "parallel/node_set.h"

namespace parallel {
namespace {

Stretch own_nodes(const Communicator& ranks, const layout::SetMesh& mesh) {
  return Partition(mesh.node_count, ranks.size()).of(ranks.rank());
}

using Axes = std::array<Axis, 3>;

Axes read_axes(FileArrays& files, const layout::SetMesh& mesh, Stretch own) {
  return {Axis(files, mesh.axes[0], own), Axis(files, mesh.axes[1], own), Axis(files, mesh.axes[2], own)};
}

// The axes to be moved: those that are kept, or what the file has.
Axes axes_to_move(FileArrays& files, const layout::SetMesh& mesh, Stretch own,
                  std::optional<BaseCoordinates>* kept) {
  if (kept == nullptr) return read_axes(files, mesh, own);
  std::optional<BaseCoordinates>& base = *kept;
  if (!base || base->places != mesh.axes) {
    base.reset();
    base = BaseCoordinates{mesh.axes, read_axes(files, mesh, own)};
  }
  return {base->axes[0].copy(), base->axes[1].copy(), base->axes[2].copy()};
}

void move_axes(const Axes& axes, const layout::SetMesh& mesh, Stretch own, const MovedNodes& moved,
               Array<float>& coordinates) {
  for (std::size_t m = 0; m < moved.size(); ++m) {
    for (const fld::ALE_ACT& action : mesh.motion[m].actions)
      fld::move_nodes(action, axes[0].values(), axes[1].values(), axes[2].values(), moved[m]);
  }
  for (std::size_t axis = 0; axis < axes.size() && own.size() > 0; ++axis) {
    float* to = coordinates.data() + axis;
    fld::visit_elements(axes[axis].values(), [&](const auto* values) {
      for (std::int64_t i = 0; i < own.size(); ++i) to[3 * i] = static_cast<float>(values[i]);
    });
  }
}

void to_cartesian(Array<float>& coordinates) {
  for (std::int64_t i = 0; i < coordinates.size(); i += 3) {
    const auto radius = static_cast<double>(coordinates[i]);
    const auto angle = static_cast<double>(coordinates[i + 1]);
    coordinates[i] = static_cast<float>(radius * std::cos(angle));
    coordinates[i + 1] = static_cast<float>(radius * std::sin(angle));
  }
}

}  // namespace

MovedNodes find_moved_nodes(Communicator& ranks, FileArrays& files, const layout::SetMesh& mesh,
                            ElementBlock& elements) {
  const Partition nodes(mesh.node_count, ranks.size());
  const Stretch own = nodes.of(ranks.rank());
  MovedNodes moved(mesh.motion.size());
  std::vector<char> is_taken;
  together(ranks, [&] { is_taken.resize(static_cast<std::size_t>(own.size())); });
  for (std::size_t m = moved.size(); m-- > 0;) {
    ListRuns list(mesh.element_count());
    together(ranks, [&] {
      for (const layout::FileArray& each : mesh.motion[m].lists) {
        const Stretch share = Partition(each.count(), ranks.size()).of(ranks.rank());
        files.read<std::int32_t>(each, share.first, share.size(),
                                 [&](const std::int32_t* from, std::int64_t count) {
                                   for (std::int64_t i = 0; i < count; ++i)
                                     list.add(without_bias(from[i], mesh.list_bias));
                                 });
      }
    });
    const ListedElements listed = elements.collect(ranks, list, false);
    NodeSet used;
    together(ranks, [&] { used = nodes_of(listed.corners.span()); });
    const NodeRequest marks(ranks, nodes, used.runs);
    together(ranks, [&] {
      for (const Run run : marks.asked().values.span()) {
        for (std::int64_t node = run.first - own.first; node < run.first - own.first + run.count; ++node) {
          if (std::exchange(is_taken[static_cast<std::size_t>(node)], 1) != 0) continue;
          moved[m].push_back(static_cast<std::int32_t>(node));
        }
      }
    });
  }
  return moved;
}

Array<float> read_coordinates(Communicator& ranks, FileArrays& files, const layout::SetMesh& mesh,
                              const MovedNodes& moved, std::optional<BaseCoordinates>* kept) {
  const Stretch own = own_nodes(ranks, mesh);
  Array<float> coordinates;
  together(ranks, [&] {
    coordinates = Array<float>(own.size() * 3);
    if (!moved.empty()) {
      move_axes(axes_to_move(files, mesh, own, kept), mesh, own, moved, coordinates);
    } else {
      for (std::size_t axis = 0; axis < 3; ++axis) {
        float* to = coordinates.data() + axis;
        files.read_floats(mesh.axes[axis], own.first, own.size(), [&](const auto* from, std::int64_t count) {
          for (std::int64_t i = 0; i < count; ++i, to += 3) *to = static_cast<float>(from[i]);
        });
      }
    }
    if (mesh.is_cylindrical) to_cartesian(coordinates);
  });
  return coordinates;
}

Array<float> read_values(Communicator& ranks, FileArrays& files, const layout::SetMesh& mesh,
                         const layout::SetValues& values, int components) {
  constexpr float kUndefined = std::numeric_limits<float>::quiet_NaN();
  const Stretch own = own_nodes(ranks, mesh);
  Array<float> read;
  together(ranks, [&] {
    read = Array<float>(own.size() * components);
    for (int component = 0; component < components; ++component) {
      const layout::FileArray& array = values.components[static_cast<std::size_t>(component)];
      const double limit = values.undefined_above[static_cast<std::size_t>(component)];
      float* to = read.data() + component;
      const std::int64_t given =
          array.exists() ? std::clamp<std::int64_t>(array.count() - own.first, 0, own.size()) : 0;
      files.read_floats(array, own.first, given, [&](const auto* from, std::int64_t count) {
        for (std::int64_t i = 0; i < count; ++i, to += components) {
          const auto value = static_cast<float>(from[i]);
          *to = static_cast<double>(value) > limit ? kUndefined : value;
        }
      });
      for (std::int64_t i = given; i < own.size(); ++i, to += components) *to = kUndefined;
    }
  });
  return read;
}

}  // namespace parallel
