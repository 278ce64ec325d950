// The floor that the reader is compared with: a plain program that reads the same bytes and swaps them, and
// no more.
#pragma once

#include <filesystem>

namespace bench {

// Reads the whole file into a new array in reads of 1 MiB, and reverses the bytes of every 4-byte word.
void read_and_swap(const std::filesystem::path& path);

}  // namespace bench
