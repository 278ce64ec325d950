#include "tool/replaced_file.h"

#include <string>
#include <system_error>

#include "tool/exit_status.h"
#include "tool/output.h"

namespace tool {

void replace_file(const std::filesystem::path& path, std::string_view text) {
  const std::string temporary = path.string() + ".tmp";
  Output output(temporary);
  output.write(text);
  output.finish();
  std::error_code error;
  std::filesystem::rename(temporary, path, error);
  if (!error) return;
  std::error_code ignored;
  std::filesystem::remove(temporary, ignored);
  throw CommandError(ExitStatus::failure, path.string(), "cannot write: " + error.message());
}

}  // namespace tool
