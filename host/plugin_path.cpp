#include "host/plugin_path.h"

#include <cstdlib>
#include <string>
#include <system_error>

#include "host/error.h"

namespace host {

std::filesystem::path find_plugin(const std::optional<std::filesystem::path>& given) {
  namespace fs = std::filesystem;
  if (given && !given->empty()) return *given;
  // The environment is only read; nothing here changes it from another thread.
  const char* named = std::getenv(kPluginVariable);
  if (named != nullptr && *named != '\0') return named;

  std::error_code error;
  const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
  const fs::path beside = folder / kPluginFile;
  const fs::path in_lib = folder.parent_path() / HOST_LIBRARY_FOLDER / kPluginFile;
  for (const fs::path& candidate : {beside, in_lib}) {
    if (fs::exists(candidate, error)) return candidate;
  }
  throw Error("cannot find the reader plug-in: neither " + beside.string() + " nor " + in_lib.string() +
              " exists and " + kPluginVariable + " is not set");
}

}  // namespace host
