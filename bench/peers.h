// The readers of other formats: each reads the same mesh with the same scalar from a file of its own format.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "bench/child_process.h"

namespace bench {

// A mesh of hexahedra with one scalar, as the files are written from it.
struct PeerMesh {
  std::size_t nodes = 0;
  std::size_t elements = 0;
  const float* axes[3] = {};     // per node
  const int* corners = nullptr;  // eight per element, from 1
  const float* scalar = nullptr;
};

inline constexpr char kPeerScalar[] = "scalar_1";

struct Peer {
  std::string name{};       // of its rows
  std::string what{};       // the reader
  std::string extension{};  // of its files
  double time_goal = 1.0;   // of the reader's time, as a share of the peer's
  std::function<void(const PeerMesh&, const std::filesystem::path&)> write{};
  // Up to coordinates, connectivity and the scalar being in arrays. Throws when they are not as many as there
  // should be.
  std::function<void(const std::filesystem::path&, std::size_t nodes, std::size_t elements, Trial&)> read{};
  std::string missing{};  // what it takes to build it, when it was not built
};

// Those that can be built here, and the others.
std::vector<Peer> all_peers();

// Each by itself.
Peer vtu_peer();
Peer legacy_peer();
Peer vtkhdf_peer();
Peer cgns_peer();

}  // namespace bench
