// Datasets that change all the time while other processes read them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace faults {

// A folder of random series. A change writes, damages, truncates or removes one file, or replaces a whole
// series.
class ChangingSeries {
 public:
  // Writes `count` series into the folder. The same seed gives the same files and changes.
  ChangingSeries(std::filesystem::path folder, std::size_t count, std::uint64_t seed);

  void change();

  // The first file of series number `number`, which may be missing at any time.
  static std::filesystem::path first_file(const std::filesystem::path& folder, std::size_t number);

 private:
  struct File {
    std::filesystem::path path;
    std::string bytes;
  };

  std::size_t roll(std::size_t sides) { return engine_() % sides; }
  void replace(std::size_t number);
  std::string damaged(std::string bytes);

  std::filesystem::path folder_;
  std::mt19937_64 engine_;
  std::vector<std::vector<File>> series_;
};

}  // namespace faults
