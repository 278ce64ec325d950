#include "tool/replaced_file.h"

#include <cerrno>
#include <system_error>
#include <unistd.h>

#include "fmt/format.h"
#include "tool/exit_status.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

// The target of symbolic links, which need not exist.
fs::path followed(fs::path path) {
  constexpr int kMostLinks = 40;  // as many as the system follows; opening more than those fails
  std::error_code error;
  for (int i = 0; i < kMostLinks && fs::is_symlink(fs::symlink_status(path, error)); ++i)
    path = path.parent_path() / fs::read_symlink(path, error);
  return path;
}

fs::path folder_of(const fs::path& path) {
  return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

}  // namespace

ReplacedFile::ReplacedFile(const fs::path& path) : path_(path), target_(followed(path)) {
  std::error_code ignored;
  const fs::file_status before = fs::status(target_, ignored);
  const bool is_regular = fs::is_regular_file(before);
  const bool is_in_place =
      is_regular ? access(folder_of(target_).c_str(), W_OK) != 0 : before.type() != fs::file_type::not_found;
  if (is_in_place) {
    file_.reset(std::fopen(target_.c_str(), "wb"));
    if (!file_) fail(errno);
    return;
  }
  if (is_regular && access(target_.c_str(), W_OK) != 0) fail(errno);
  // A name that nothing has: a file that is there may be the user's.
  fs::path beside;
  for (int i = 0; !file_; ++i) {
    beside = folder_of(target_) / fmt::format(".{}.{}-{}", target_.filename().string(), getpid(), i);
    file_.reset(std::fopen(beside.c_str(), "wbx"));
    if (!file_ && errno != EEXIST) fail(errno);
  }
  temporary_ = beside;
  if (is_regular) fs::permissions(temporary_, before.permissions(), ignored);
}

ReplacedFile::~ReplacedFile() {
  if (temporary_.empty()) return;
  std::error_code ignored;
  fs::remove(temporary_, ignored);
}

void ReplacedFile::write(std::string_view bytes) {
  if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) fail(errno);
}

void ReplacedFile::finish() {
  if (std::fclose(file_.release()) != 0) fail(errno);
  if (temporary_.empty()) return;
  std::error_code error;
  fs::rename(temporary_, target_, error);
  if (error) fail(error.value());
  temporary_.clear();
}

void ReplacedFile::fail(int error) const {
  throw CommandError(ExitStatus::failure, path_.string(),
                     "cannot write: " + std::generic_category().message(error));
}

void replace_file(const fs::path& path, std::string_view bytes) {
  ReplacedFile file(path);
  file.write(bytes);
  file.finish();
}

}  // namespace tool
