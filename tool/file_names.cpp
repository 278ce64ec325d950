#include "tool/file_names.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <system_error>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "tool/exit_status.h"
#include "tool/output.h"

namespace tool {

CLI::Validator file_name() {
  return CLI::Validator([](const std::string& text) { return text.empty() ? "the file name is empty" : ""; },
                        "");
}

CLI::Validator not_empty() {
  return CLI::Validator([](const std::string& text) { return text.empty() ? "the value is empty" : ""; }, "");
}

std::string extension_of(const std::string& path) {
  std::string extension = std::filesystem::path(path).extension().string();
  for (char& character : extension)
    character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
  return extension;
}

void check_extension(const std::string& path, const std::vector<std::string_view>& extensions) {
  const std::string extension = extension_of(path);
  if (path == kStandardOutput || extension.empty()) return;
  std::error_code ignored;
  if (std::filesystem::is_other(path, ignored)) return;
  if (std::find(extensions.begin(), extensions.end(), extension) != extensions.end()) return;
  throw CommandError(ExitStatus::usage, path,
                     fmt::format("cannot write '{}' files: the name has to end in {}", extension,
                                 fmt::join(extensions, " or ")));
}

std::string plain_name(std::string_view name) {
  constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-";
  constexpr std::size_t kLongest = 60;
  std::string result;
  for (const char character : name.substr(0, kLongest))
    result += kPlain.find(character) == std::string_view::npos ? '_' : character;
  return result;
}

}  // namespace tool
