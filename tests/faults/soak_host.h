// A host process of the soak: session after session over datasets that change, until it is told to stop.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <filesystem>

#include "tests/faults/whole_session.h"

namespace faults {

// What a host process reports, in memory shared with the process that started it.
struct HostReport {
  std::atomic<std::uint64_t> sessions = 0;
  std::array<std::atomic<std::uint64_t>, kOutcomes> by_outcome{};
  std::atomic<std::ptrdiff_t> held = 0;         // bytes more than after the warm-up
  std::atomic<std::ptrdiff_t> descriptors = 0;  // open ones more than after the warm-up
  std::atomic<std::ptrdiff_t> resident = 0;     // bytes of the process
  std::atomic<bool> should_stop = false;
  std::array<char, 1000> complaint{};  // why the process ended, if a session was wrong
};

// Returns true when it was told to stop, false with a complaint.
bool run_soak_host(const std::filesystem::path& folder, std::size_t series, std::uint64_t seed,
                   HostReport& report);

}  // namespace faults
