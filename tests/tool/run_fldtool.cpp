#include "tests/tool/run_fldtool.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace tool_test {
namespace {

// A file in memory that a child process writes to.
class MemoryFile {
 public:
  MemoryFile() : descriptor_(memfd_create("caught", MFD_CLOEXEC)) {
    if (descriptor_ < 0) throw std::system_error(errno, std::generic_category(), "memfd_create");
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() { close(descriptor_); }

  int descriptor() const { return descriptor_; }

  std::string text() const {
    std::string text;
    std::array<char, 65536> piece = {};
    lseek(descriptor_, 0, SEEK_SET);
    for (ssize_t size = 1; size > 0;) {
      size = read(descriptor_, piece.data(), piece.size());
      if (size > 0) text.append(piece.data(), static_cast<std::size_t>(size));
    }
    return text;
  }

 private:
  int descriptor_;
};

}  // namespace

Result run_fldtool(const std::vector<std::string>& arguments, const std::string& output_file) {
  std::vector<std::string> words = {"fldtool"};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);

  const MemoryFile output;
  const MemoryFile errors;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  if (output_file.empty()) {
    posix_spawn_file_actions_adddup2(&actions, output.descriptor(), STDOUT_FILENO);
  } else {
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output_file.c_str(), O_WRONLY, 0);
  }
  posix_spawn_file_actions_adddup2(&actions, errors.descriptor(), STDERR_FILENO);
  pid_t child = 0;
  const int error = posix_spawn(&child, FLDTOOL, &actions, nullptr, pointers.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (error != 0) throw std::system_error(error, std::generic_category(), "posix_spawn");
  int status = 0;
  waitpid(child, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output.text(), errors.text()};
}

}  // namespace tool_test
