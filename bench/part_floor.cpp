#include "bench/part_floor.h"

#include <algorithm>
#include <array>

namespace bench {

namespace {

template <std::size_t kWidth>
void write_rows_of(const int* corners, const HostRows& rows) {
  for (std::size_t i = 0; i < rows.count; ++i) {
    int* const row = rows.rows[i];
    for (std::size_t c = 0; c < kWidth; ++c) row[c] = corners[i * kWidth + c] + 1;
  }
}

}  // namespace

PlainMesh plain_mesh(const Host& host, const PartInfo& part) {
  PlainMesh mesh;
  const HostCoordinates axes = host.coordinates(part);
  const std::array<std::vector<float>*, 3> plain = {&mesh.x, &mesh.y, &mesh.z};
  for (std::size_t axis = 0; axis < axes.size(); ++axis) {
    plain[axis]->assign(axes[axis].get() + 1, axes[axis].get() + 1 + part.nodes);
  }
  const auto shapes = host.elements(part);
  auto next = shapes.begin();
  for (const auto& [slot, count] : part.elements) {
    auto& corners = mesh.corners[slot];
    corners.assign(next->block.get(), next->block.get() + next->count * next->width);
    for (int& corner : corners) --corner;
    ++next;
  }
  return mesh;
}

HostCoordinates write_coordinates(const PlainMesh& mesh) {
  HostCoordinates axes = new_coordinates(mesh.x.size());
  const std::array<const std::vector<float>*, 3> plain = {&mesh.x, &mesh.y, &mesh.z};
  for (std::size_t axis = 0; axis < axes.size(); ++axis) {
    std::copy(plain[axis]->begin(), plain[axis]->end(), axes[axis].get() + 1);
  }
  return axes;
}

void write_rows(const std::vector<int>& corners, const HostRows& rows) {
  switch (rows.width) {
    case 3:
      return write_rows_of<3>(corners.data(), rows);
    case 4:
      return write_rows_of<4>(corners.data(), rows);
    case 5:
      return write_rows_of<5>(corners.data(), rows);
    case 6:
      return write_rows_of<6>(corners.data(), rows);
    default:
      return write_rows_of<8>(corners.data(), rows);
  }
}

}  // namespace bench
