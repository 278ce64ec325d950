// Replays saved inputs without a fuzzer: replay_<target> FILE-OR-FOLDER... Makes the same checks as fuzzing;
// a failed check ends the process.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/target.h"

namespace {

std::vector<std::filesystem::path> files_of(const std::filesystem::path& path) {
  if (!std::filesystem::is_directory(path)) return {path};
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

bool replay(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(stream)), {});
  if (!stream) return false;
  // A copy of exactly this size, so that a memory checker detects reads beyond it.
  const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
  LLVMFuzzerTestOneInput(input.data(), input.size());
  return true;
}

int replay_all(const std::vector<std::string>& arguments) {
  std::size_t count = 0;
  for (const std::string& argument : arguments) {
    for (const auto& file : files_of(argument)) {
      // Printed before the run, so that the last line names the file that ended the process.
      std::printf("%s\n", file.c_str());
      std::fflush(stdout);
      if (!replay(file)) {
        std::fprintf(stderr, "cannot read %s\n", file.c_str());
        return 1;
      }
      ++count;
    }
  }
  std::printf("%zu inputs\n", count);
  return count > 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return replay_all({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
