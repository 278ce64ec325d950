// How often files are opened, as the system sees it.
#pragma once

#include <filesystem>
#include <map>

namespace reader_test {

class OpenCounter {
 public:
  // Throws std::system_error when the system refuses.
  OpenCounter();
  ~OpenCounter();
  OpenCounter(const OpenCounter&) = delete;
  OpenCounter& operator=(const OpenCounter&) = delete;

  // Begins to count the openings of a file.
  void watch(const std::filesystem::path& path);

  // Openings of that file, or of all watched files, since the last call of that kind for it.
  int take(const std::filesystem::path& path);
  int take_all();

 private:
  void collect();

  int queue_;
  std::map<std::filesystem::path, int> watches_;
  std::map<int, int> opened_;
};

}  // namespace reader_test
