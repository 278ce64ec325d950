#include "testkit/temporary_directory.h"

#include <cerrno>
#include <stdlib.h>
#include <string>
#include <system_error>

namespace testkit {

TemporaryDirectory::TemporaryDirectory(const std::filesystem::path& parent) {
  std::string name = (parent / "fld-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) {
    throw std::system_error(errno, std::generic_category(), "cannot make a directory like " + name);
  }
  path_ = name;
}

TemporaryDirectory::~TemporaryDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace testkit
