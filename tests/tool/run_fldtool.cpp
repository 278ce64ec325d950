#include "tests/tool/run_fldtool.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

#include "tests/tool/terminal.h"

namespace tool_test {
namespace {

std::string read_to_end(int descriptor) {
  std::string text;
  std::array<char, 65536> piece = {};
  for (ssize_t size = 1; size > 0;) {
    size = read(descriptor, piece.data(), piece.size());
    if (size > 0) text.append(piece.data(), static_cast<std::size_t>(size));
  }
  return text;
}

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
    lseek(descriptor_, 0, SEEK_SET);
    return read_to_end(descriptor_);
  }

 private:
  int descriptor_;
};

// Where a stream of a child process goes: into memory, to a file, or nowhere.
class Sink {
 public:
  explicit Sink(const std::string& file) {
    if (file.empty() || file == kClosed) {
      descriptor_ = file.empty() ? memory_.descriptor() : -1;
      return;
    }
    file_ = open(file.c_str(), O_WRONLY | O_CLOEXEC);
    if (file_ < 0) throw std::system_error(errno, std::generic_category(), file);
    descriptor_ = file_;
  }
  Sink(const Sink&) = delete;
  Sink& operator=(const Sink&) = delete;
  ~Sink() {
    if (file_ >= 0) close(file_);
  }

  int descriptor() const { return descriptor_; }
  // What went into memory.
  std::string text() const { return memory_.text(); }

 private:
  MemoryFile memory_;
  int file_ = -1;
  int descriptor_ = -1;
};

// The program, running, with its streams at the given descriptors; a negative one is a stream that is closed.
class Running {
 public:
  Running(const std::vector<std::string>& arguments, int output, int errors) {
    std::vector<std::string> words = {"fldtool"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const auto& [stream, descriptor] :
         {std::pair(STDOUT_FILENO, output), std::pair(STDERR_FILENO, errors)}) {
      if (descriptor < 0) {
        posix_spawn_file_actions_addclose(&actions, stream);
      } else {
        posix_spawn_file_actions_adddup2(&actions, descriptor, stream);
      }
    }
    // Programs that a script starts in its background, as these tests may be, ignore interrupts.
    sigset_t interrupts;
    sigemptyset(&interrupts);
    sigaddset(&interrupts, SIGINT);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setsigdefault(&attributes, &interrupts);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    const int error =
        posix_spawn(&child_, fldtool().c_str(), &actions, &attributes, pointers.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw std::system_error(error, std::generic_category(), "posix_spawn");
  }

  void send(int signal_number) const { kill(child_, signal_number); }

  pid_t process() const { return child_; }
  bool has_ended() const {
    siginfo_t info{};
    return waitid(P_PID, static_cast<id_t>(child_), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           info.si_pid != 0;
  }

  // The exit status; -1 when a signal ended the program.
  int wait() const {
    int status = 0;
    waitpid(child_, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  pid_t child_ = 0;
};

}  // namespace

std::string fldtool() {
  const char* const other = std::getenv("FLDTOOL");
  return other != nullptr ? other : FLDTOOL;
}

Result run_fldtool(const std::vector<std::string>& arguments, const std::string& output_file,
                   const std::string& errors_file) {
  const Sink output(output_file);
  const Sink errors(errors_file);
  const int status = Running(arguments, output.descriptor(), errors.descriptor()).wait();
  return {status, output.text(), errors.text()};
}

Result run_fldtool_on_terminal(const std::vector<std::string>& arguments) {
  const MemoryFile output;
  const Terminal terminal;
  const int status = Running(arguments, output.descriptor(), terminal.screen()).wait();
  return {status, output.text(), terminal.take()};
}

Result run_fldtool_and_interrupt(const std::vector<std::string>& arguments, int signal_number) {
  const MemoryFile errors;
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category(), "pipe2");
  const Running program(arguments, ends[1], errors.descriptor());
  close(ends[1]);
  pollfd output{.fd = ends[0], .events = POLLIN, .revents = 0};
  poll(&output, 1, -1);
  program.send(signal_number);
  const std::string text = read_to_end(ends[0]);
  close(ends[0]);
  return {program.wait(), text, errors.text()};
}

Result run_fldtool_on_terminal_and_interrupt(const std::vector<std::string>& arguments, int signal_number) {
  const MemoryFile output;
  const Terminal terminal;
  const Running program(arguments, output.descriptor(), terminal.screen());
  const std::string drawn = terminal.wait_and_take();
  program.send(signal_number);
  const int status = program.wait();
  return {status, output.text(), drawn + terminal.take()};
}

Result run_fldtool_and_interrupt_when(const std::vector<std::string>& arguments,
                                      const std::function<bool(pid_t)>& is_time, int signal_number) {
  const MemoryFile output;
  const MemoryFile errors;
  const Running program(arguments, output.descriptor(), errors.descriptor());
  while (!is_time(program.process()) && !program.has_ended())
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  program.send(signal_number);
  const int status = program.wait();
  return {status, output.text(), errors.text()};
}

bool has_open(pid_t process, const std::string& file) {
  std::error_code ignored;
  const auto files = std::filesystem::path("/proc") / std::to_string(process) / "fd";
  for (const auto& entry : std::filesystem::directory_iterator(files, ignored)) {
    if (std::filesystem::read_symlink(entry.path(), ignored) == file) return true;
  }
  return false;
}

void expect_error(const std::vector<std::string>& arguments, int status, const std::string& line) {
  const Result result = run_fldtool(arguments);
  EXPECT_EQ(result.status, status) << line;
  EXPECT_EQ(result.errors, "fldtool: " + line + "\n");
  EXPECT_EQ(result.output, "") << line;
}

}  // namespace tool_test
