#include "fuzz/scratch_directory.h"

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <system_error>
#include <unistd.h>

namespace fuzz {
namespace {

constexpr char kMemory[] = "/dev/shm";

std::filesystem::path place_for_files() {
  return access(kMemory, W_OK) == 0 ? std::filesystem::path(kMemory) : std::filesystem::temp_directory_path();
}

}  // namespace

ScratchDirectory::ScratchDirectory() : path_(place_for_files() / ("fld-fuzz-" + std::to_string(getpid()))) {
  std::filesystem::create_directories(path_);
}

ScratchDirectory::~ScratchDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path ScratchDirectory::write(std::string_view name, std::string_view bytes) const {
  std::filesystem::path file = path_ / name;
  const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  const bool written = descriptor >= 0 &&
                       ::write(descriptor, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  const int error = errno;
  if (descriptor >= 0) close(descriptor);
  if (!written) throw std::system_error(error, std::generic_category(), file.string());
  return file;
}

}  // namespace fuzz
