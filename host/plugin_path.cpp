#include "host/plugin_path.h"

#include <cstdlib>
#include <dlfcn.h>
#include <string>
#include <system_error>

#include "host/error.h"

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr int kFoldersAbove = 3;

// The value of FLD_PLUGIN; none if it is not set.
std::optional<fs::path> named_plugin() {
  const char* named = std::getenv(kPluginVariable);
  if (named == nullptr || *named == '\0') return std::nullopt;
  return named;
}

}  // namespace

fs::path find_plugin(const std::optional<fs::path>& given) {
  if (given && !given->empty()) return *given;
  if (const auto named = named_plugin()) return *named;

  std::error_code error;
  return find_plugin_of_program(fs::read_symlink("/proc/self/exe", error));
}

fs::path find_plugin_of_program(const fs::path& program) {
  std::error_code error;
  const fs::path folder = program.parent_path();
  const fs::path beside = folder / kPluginFile;
  const fs::path in_lib = folder.parent_path() / HOST_LIBRARY_FOLDER / kPluginFile;
  // From a folder of libexec.
  const fs::path farther = folder.parent_path().parent_path() / HOST_LIBRARY_FOLDER / kPluginFile;
  for (const fs::path& candidate : {beside, in_lib, farther}) {
    if (fs::exists(candidate, error)) return candidate;
  }
  throw Error("cannot find the reader plug-in: neither " + beside.string() + " nor " + in_lib.string() +
              " exists and " + kPluginVariable + " is not set");
}

fs::path find_plugin_near(const void* address) {
  if (const auto named = named_plugin()) return *named;

  Dl_info holder{};
  if (dladdr(address, &holder) == 0)
    throw Error("cannot find the reader plug-in: no library is loaded there");
  std::error_code error;
  const fs::path beside = fs::absolute(holder.dli_fname).parent_path();
  fs::path folder = beside;
  for (int i = 0; i <= kFoldersAbove; ++i, folder = folder.parent_path()) {
    if (fs::exists(folder / kPluginFile, error)) return folder / kPluginFile;
  }
  throw Error("cannot find the reader plug-in: " + std::string(kPluginFile) + " is neither in " +
              beside.string() + " nor in the folders above it, and " + kPluginVariable + " is not set");
}

}  // namespace host
