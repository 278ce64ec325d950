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

// Reads a stretch of a file in reads of 256 KiB, on `threads` threads with one buffer each: the least that
// fetching the bytes takes. Throws std::runtime_error when the file has less.
void read_only(const std::filesystem::path& path, const Stretch& stretch, unsigned threads);

// Writes one byte into each page of new memory of this size, on `threads` threads that have a range each: the
// least that the system takes to provide it.
void touch_pages(std::size_t bytes, unsigned threads);

// Opens a file and reads these stretches of it, one read each.
void read_stretches(const std::filesystem::path& path, const std::vector<Stretch>& stretches);

}  // namespace bench
