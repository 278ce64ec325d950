// The readers of VTK, where VTK was not found.
#include "bench/comparison.h"
#include "bench/peers.h"

namespace bench {

namespace {
constexpr char kMissing[] = "VTK with its readers of XML, legacy, HDF and CGNS files";
}  // namespace

Peer vtu_peer() {
  return {.name = "vtu",
          .what = "VTK's reader of .vtu, appended raw",
          .time_goal = goal_of_threads(0.90, 0.55),
          .missing = kMissing};
}

Peer legacy_peer() {
  return {.name = "legacy",
          .what = "VTK's reader of legacy binary .vtk",
          .time_goal = goal_of_threads(0.65, 0.40),
          .missing = kMissing};
}

Peer vtkhdf_peer() {
  return {.name = "vtkhdf", .what = "VTK's reader of VTKHDF", .time_goal = 0.5, .missing = kMissing};
}

Peer cgns_peer() {
  return {.name = "cgns", .what = "VTK's reader of CGNS", .time_goal = 0.5, .missing = kMissing};
}

}  // namespace bench
