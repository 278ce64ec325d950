#include "bench/part_sides.h"

#include "bench/part_floor.h"
#include "host/element_slots.h"

namespace bench {

namespace {

std::vector<HostRows> new_rows(const PartInfo& part) {
  std::vector<HostRows> shapes;
  for (const auto& [slot, count] : part.elements) {
    shapes.emplace_back(count, static_cast<std::size_t>(host::shape_of_slot(slot)->nodes));
  }
  return shapes;
}

}  // namespace

Work take_mesh(const std::filesystem::path& plugin, const std::filesystem::path& file) {
  return [=](Trial& trial) {
    Host host(plugin);
    host.open(file);
    const PartInfo part = whole_mesh(host);
    const auto shapes = new_rows(part);
    trial.begin();
    const HostCoordinates axes = host.coordinates(part);
    auto next = shapes.begin();
    for (const auto& [slot, count] : part.elements) host.fill_rows(part, slot, *next++);
    trial.end();
  };
}

Work write_mesh(const std::filesystem::path& plugin, const std::filesystem::path& file) {
  return [=](Trial& trial) {
    Host host(plugin);
    host.open(file);
    const PartInfo part = whole_mesh(host);
    const PlainMesh mesh = plain_mesh(host, part);
    const auto shapes = new_rows(part);
    trial.begin();
    const HostCoordinates axes = write_coordinates(mesh);
    auto next = shapes.begin();
    for (const auto& [slot, corners] : mesh.corners) write_rows(corners, *next++);
    trial.end();
  };
}

}  // namespace bench
