// Counts how often files are opened, with inotify.
#pragma once

#include <filesystem>
#include <map>

namespace reader_test {

class OpenCounter {
 public:
  // Throws std::system_error.
  OpenCounter();
  ~OpenCounter();
  OpenCounter(const OpenCounter&) = delete;
  OpenCounter& operator=(const OpenCounter&) = delete;

  // Starts counting for a file.
  void watch(const std::filesystem::path& path);

  // Opens of this file, or of all watched files, since the last such call.
  int take(const std::filesystem::path& path);
  int take_all();

 private:
  void collect();

  int queue_;
  std::map<std::filesystem::path, int> watches_;
  std::map<int, int> opened_;
};

}  // namespace reader_test
