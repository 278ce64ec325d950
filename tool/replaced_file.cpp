#include "tool/replaced_file.h"

#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

#include "tool/exit_status.h"

namespace tool {
namespace {

// Whether all of it was written; errno says why not.
bool write_file(const std::string& path, std::string_view text) {
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return false;
  const bool is_written = std::fwrite(text.data(), 1, text.size(), file) == text.size();
  const int error = errno;
  if (std::fclose(file) != 0) return false;
  errno = error;
  return is_written;
}

}  // namespace

void replace_file(const std::filesystem::path& path, std::string_view text) {
  const std::string temporary = path.string() + ".tmp";
  std::error_code error;
  if (write_file(temporary, text)) {
    std::filesystem::rename(temporary, path, error);
    if (!error) return;
  } else {
    error = std::error_code(errno, std::generic_category());
  }
  std::error_code ignored;
  std::filesystem::remove(temporary, ignored);
  throw CommandError(ExitStatus::failure, path.string(), "cannot write: " + error.message());
}

}  // namespace tool
