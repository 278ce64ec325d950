// A host's whole session against the readers of other formats, on the same mesh.
#include "bench/comparison.h"
#include "bench/host_arrays.h"
#include "bench/least.h"
#include "bench/peers.h"

namespace bench {

namespace {

constexpr double kPeerMillions = 4.0;
constexpr double kMemoryGoal = 0.8;

// The peer's file from what a host gets of the dataset, so that both have the same.
void write_peer_file(const Peer& peer, const std::filesystem::path& plugin, const std::filesystem::path& file,
                     const std::filesystem::path& path) {
  measure_in_child([&](Trial&) {
    Host host(plugin);
    host.open(file);
    const PartInfo part = whole_mesh(host);
    const TakenPart taken = host.take_all(part);
    const HostRows& rows = taken.elements.front();
    PeerMesh mesh{.nodes = part.nodes, .elements = rows.count};
    for (std::size_t axis = 0; axis < 3; ++axis) mesh.axes[axis] = taken.coordinates[axis].get() + 1;
    mesh.corners = rows.block.get();
    mesh.scalar = taken.values.get() + 1;
    peer.write(mesh, path);
  });
}

// Of a session: the geometry and one scalar, with the arrays of the reader and of the host.
Least least_session(const Dataset& box) {
  const auto counts = testkit::box_counts(box.box);
  const auto nodes = static_cast<std::size_t>(counts.nodes);
  const std::size_t host_arrays =
      coordinate_bytes(nodes) + (nodes + 1 + static_cast<std::size_t>(counts.conn)) * 4;
  return {.file = box.file,
          .stretch = {0, box.geometry().size + box.scalar_values().size},
          .bytes = bytes_kept(box.box) + nodes * sizeof(float) + host_arrays,
          .rows = static_cast<std::size_t>(counts.elements)};
}

std::vector<Comparison> prepare_peer(Datasets& datasets) {
  const Dataset& box = datasets.box(kPeerMillions);
  const auto plugin = datasets.plugin();
  const auto counts = testkit::box_counts(box.box);
  std::vector<Comparison> comparisons;
  for (const Peer& peer : all_peers()) {
    Comparison comparison;
    if (peer.missing.empty()) {
      const auto path = datasets.path(peer.name + peer.extension);
      write_peer_file(peer, plugin, box.file, path);
      comparison.sides = {[plugin, file = box.file](Trial& trial) { run_session(plugin, file, trial); },
                          [=](Trial& trial) {
                            peer.read(path, static_cast<std::size_t>(counts.nodes),
                                      static_cast<std::size_t>(counts.elements), trial);
                          },
                          least_work(least_session(box))};
    }
    comparison.rows = {{.name = peer.name,
                        .what = "session over 4 M hexahedra / " + peer.what,
                        .goal = peer.time_goal,
                        .missing = peer.missing},
                       {.name = peer.name + "-memory",
                        .what = "peak memory of the session, host's arrays left out / " + peer.what,
                        .goal = kMemoryGoal,
                        .figure = Figure::kMemory,
                        .missing = peer.missing},
                       {.name = peer.name + "-least",
                        .what = "reading the bytes of the session, touching the pages of its arrays, and the "
                                "host's pointers to rows, and no more / that",
                        .side = 2,
                        .missing = peer.missing}};
    comparisons.push_back(std::move(comparison));
  }
  return comparisons;
}

}  // namespace

std::vector<Peer> all_peers() {
  return {vtu_peer(), legacy_peer(), vtkhdf_peer(), cgns_peer()};
}

Family peer_rows() {
  Family family{.prepare = prepare_peer};
  for (const Peer& peer : all_peers()) {
    family.names.push_back(peer.name);
    family.names.push_back(peer.name + "-memory");
    family.names.push_back(peer.name + "-least");
  }
  return family;
}

}  // namespace bench
