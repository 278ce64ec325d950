// The floors that the reader is compared with: plain programs that do what cannot be saved, and no more.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

namespace bench {

// A stretch of a file, in bytes.
struct Stretch {
  std::uint64_t offset = 0;
  std::uint64_t size = 0;
};

// A new array of 4-byte words.
using Words = std::unique_ptr<std::uint32_t[]>;

// Reads a stretch of a file into a new array, in reads of 1 MiB, and reverses the bytes of every 4-byte word.
// Throws std::runtime_error when the file has less.
Words read_and_swap(const std::filesystem::path& path, const Stretch& stretch);

// Opens a file and reads these stretches of it, one read each.
void read_stretches(const std::filesystem::path& path, const std::vector<Stretch>& stretches);

}  // namespace bench
