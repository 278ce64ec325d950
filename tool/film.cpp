#include "tool/film.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#include "fmt/format.h"
#include "host/anonymous_file.h"
#include "host/text_encoding.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/interrupt.h"

namespace tool {
namespace {

constexpr int kOutput = 3;  // the descriptor of the film in ffmpeg

std::vector<std::string> coding(const std::string& extension, const std::string& background) {
  // One set of colours for the whole film, without the grain that would make it large.
  if (extension == ".gif")
    return {"-vf", "split[a][b];[a]palettegen[p];[b][p]paletteuse=dither=none:diff_mode=rectangle", "-f",
            "gif"};
  const std::string even = "pad=ceil(iw/2)*2:ceil(ih/2)*2:color=" + background;
  if (extension == ".mp4")
    return {"-vf",      even,      "-c:v",      "libx264",    "-crf", "18",
            "-pix_fmt", "yuv420p", "-movflags", "+faststart", "-f",   "mp4"};
  return {"-vf", even,      "-c:v", "libvpx-vp9", "-crf",    "24", "-b:v",
          "0",   "-row-mt", "1",    "-pix_fmt",   "yuv420p", "-f", "webm"};
}

// Descriptors for a child process, closed when this goes.
class FileActions {
 public:
  FileActions() { posix_spawn_file_actions_init(&actions_); }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;
  ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }

  void give(int descriptor, int as) { posix_spawn_file_actions_adddup2(&actions_, descriptor, as); }
  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

// A process group of its own, so that Ctrl-C is for this program alone, and signals as they usually are.
class Attributes {
 public:
  Attributes() {
    posix_spawnattr_init(&attributes_);
    sigset_t usual{};
    sigemptyset(&usual);
    posix_spawnattr_setsigmask(&attributes_, &usual);
    for (const int number : {SIGINT, SIGTERM, SIGPIPE}) sigaddset(&usual, number);
    posix_spawnattr_setsigdefault(&attributes_, &usual);
    posix_spawnattr_setpgroup(&attributes_, 0);
    posix_spawnattr_setflags(&attributes_,
                             POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
  }
  Attributes(const Attributes&) = delete;
  Attributes& operator=(const Attributes&) = delete;
  ~Attributes() { posix_spawnattr_destroy(&attributes_); }

  const posix_spawnattr_t* get() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_{};
};

CommandError cannot_run(int error) {
  return {ExitStatus::failure, "cannot run ffmpeg: " + std::generic_category().message(error)};
}

// The last line that is not empty.
std::string last_line(int file) {
  constexpr off_t kMost = 4096;
  const off_t size = lseek(file, 0, SEEK_END);
  std::string text(static_cast<std::size_t>(std::clamp(size, off_t{0}, kMost)), '\0');
  const ssize_t got = pread(file, text.data(), text.size(), std::max(off_t{0}, size - kMost));
  text.resize(static_cast<std::size_t>(std::max(ssize_t{0}, got)));
  while (text.ends_with('\n')) text.pop_back();
  return host::printable(text.substr(text.find_last_of('\n') + 1));
}

}  // namespace

bool is_film(const std::filesystem::path& path) {
  const std::string extension = extension_of(path.string());
  return std::find(kFilmExtensions.begin(), kFilmExtensions.end(), extension) != kFilmExtensions.end();
}

std::unique_ptr<Film> Film::begin(const std::filesystem::path& path, double fps,
                                  const std::string& background) {
  std::vector<std::string> words = {
      "ffmpeg",     "-hide_banner",         "-loglevel", "error", "-y", "-f",    "image2pipe",
      "-framerate", fmt::format("{}", fps), "-c:v",      "png",   "-i", "pipe:0"};
  for (std::string& word : coding(extension_of(path.string()), background)) words.push_back(std::move(word));
  words.push_back(fmt::format("/dev/fd/{}", kOutput));
  std::unique_ptr<Film> film(new Film(path));
  if (!film->run(words)) return nullptr;
  return film;
}

bool Film::run(const std::vector<std::string>& words) {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) throw cannot_run(errno);
  pictures_ = ends[0];
  complaints_ = host::open_anonymous_file();
  FileActions actions;
  actions.give(ends[1], STDIN_FILENO);
  actions.give(complaints_, STDOUT_FILENO);
  actions.give(complaints_, STDERR_FILENO);
  actions.give(file_.descriptor(), kOutput);
  std::vector<char*> pointers;
  for (const std::string& word : words) pointers.push_back(const_cast<char*>(word.c_str()));
  pointers.push_back(nullptr);
  const int error =
      posix_spawnp(&process_, "ffmpeg", actions.get(), Attributes().get(), pointers.data(), environ);
  close(ends[1]);
  if (error == 0) return true;
  process_ = -1;
  if (error == ENOENT) return false;
  throw cannot_run(error);
}

Film::~Film() {
  if (pictures_ >= 0) close(pictures_);
  if (complaints_ >= 0) close(complaints_);
  if (process_ < 0) return;
  kill(process_, SIGKILL);
  while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

void Film::add(std::string_view png) {
  while (!png.empty()) {
    stop_if_interrupted();
    const ssize_t sent = send(pictures_, png.data(), png.size(), MSG_NOSIGNAL);
    if (sent < 0 && errno != EINTR) fail();
    if (sent > 0) png.remove_prefix(static_cast<std::size_t>(sent));
  }
}

void Film::finish() {
  shutdown(pictures_, SHUT_WR);
  int status = 0;
  while (waitpid(process_, &status, 0) < 0) {
    if (errno != EINTR) throw cannot_run(errno);
    stop_if_interrupted();
  }
  process_ = -1;
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) fail();
  file_.finish();
}

void Film::fail() {
  if (process_ >= 0) {  // it reads no more, so it has ended or is about to
    int status = 0;
    while (waitpid(process_, &status, 0) < 0 && errno == EINTR) stop_if_interrupted();
    process_ = -1;
  }
  const std::string reason = last_line(complaints_);
  throw CommandError(ExitStatus::failure, path_.string(),
                     "ffmpeg cannot make the film" + (reason.empty() ? "" : ": " + reason));
}

}  // namespace tool
