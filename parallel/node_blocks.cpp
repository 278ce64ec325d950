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

// One axis in the precision of its file, as a motion wants it.
class Axis {
 public:
  Axis(FileArrays& files, const layout::FileArray& array, Stretch own) {
    if (array.place.width == sizeof(float)) {
      read(files, array, own, singles_);
      values_ = {sizeof(float), singles_.data()};
    } else {
      read(files, array, own, doubles_);
      values_ = {sizeof(double), doubles_.data()};
    }
  }

  const fld::VFPA& values() const { return values_; }

 private:
  template <typename Real>
  void read(FileArrays& files, const layout::FileArray& array, Stretch own, Array<Real>& to) {
    to = Array<Real>(own.size());
    Real* next = to.data();
    files.read<Real>(array, own.first, own.size(),
                     [&](const Real* from, std::int64_t count) { next = std::copy_n(from, count, next); });
  }

  Array<float> singles_;
  Array<double> doubles_;
  fld::VFPA values_;
};

void read_moved(FileArrays& files, const layout::SetMesh& mesh, Stretch own, const MovedNodes& moved,
                Array<float>& coordinates) {
  const Axis x(files, mesh.axes[0], own);
  const Axis y(files, mesh.axes[1], own);
  const Axis z(files, mesh.axes[2], own);
  for (std::size_t m = 0; m < moved.size(); ++m) {
    for (const fld::ALE_ACT& action : mesh.motion[m].actions)
      fld::move_nodes(action, x.values(), y.values(), z.values(), moved[m]);
  }
  int axis = 0;
  for (const Axis* each : {&x, &y, &z}) {
    float* to = coordinates.data() + axis++;
    if (own.size() == 0) continue;
    fld::visit_elements(each->values(), [&](const auto* values) {
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
                            const ElementBlock& elements) {
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
        files.read<std::int32_t>(
            each, share.first, share.size(), [&](const std::int32_t* from, std::int64_t count) {
              for (std::int64_t i = 0; i < count; ++i) {
                list.add(static_cast<std::int32_t>(static_cast<std::uint32_t>(from[i]) -
                                                   static_cast<std::uint32_t>(mesh.list_bias)));
              }
            });
      }
    });
    const ListedElements listed = elements.collect(ranks, list);
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
                              const MovedNodes& moved) {
  const Stretch own = own_nodes(ranks, mesh);
  Array<float> coordinates;
  together(ranks, [&] {
    coordinates = Array<float>(own.size() * 3);
    if (!moved.empty()) {
      read_moved(files, mesh, own, moved, coordinates);
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
