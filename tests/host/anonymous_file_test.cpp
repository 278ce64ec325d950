// Files of which no name is left behind.
#include "host/anonymous_file.h"

#include "gtest/gtest.h"
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <unistd.h>

#include "testkit/temporary_directory.h"

namespace {

// What the descriptor is open for; closes it.
std::string target_of(int descriptor) {
  EXPECT_GE(descriptor, 0);
  EXPECT_NE(fcntl(descriptor, F_GETFD) & FD_CLOEXEC, 0);
  const std::string target =
      std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor)).string();
  close(descriptor);
  return target;
}

class AnonymousFile : public testing::Test {
 protected:
  AnonymousFile() {
    if (const char* const folder = std::getenv("TMPDIR")) previous_ = folder;
  }
  ~AnonymousFile() override {
    if (previous_.empty()) {
      unsetenv("TMPDIR");
    } else {
      setenv("TMPDIR", previous_.c_str(), 1);
    }
  }

 private:
  std::string previous_;
};

TEST_F(AnonymousFile, IsWhereItIsAskedFor) {
  const testkit::TemporaryDirectory directory;
  setenv("TMPDIR", directory.path().c_str(), 1);
  EXPECT_EQ(target_of(host::open_anonymous_file(host::Storage::memory)), "/memfd:reader (deleted)");
  const std::string on_disk = target_of(host::open_anonymous_file(host::Storage::temporary_folder));
  EXPECT_TRUE(on_disk.starts_with((directory / "reader-").string())) << on_disk;
  EXPECT_TRUE(on_disk.ends_with(" (deleted)")) << on_disk;
  EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
  EXPECT_EQ(target_of(host::open_anonymous_file()), "/memfd:reader (deleted)");
}

TEST_F(AnonymousFile, TellsThatThereIsNoTemporaryFolder) {
  setenv("TMPDIR", "/nowhere", 1);
  errno = 0;
  EXPECT_EQ(host::open_anonymous_file(host::Storage::temporary_folder), -1);
  EXPECT_EQ(errno, ENOENT);
  setenv("TMPDIR", "/sys", 1);  // takes no files of anybody
  EXPECT_EQ(host::open_anonymous_file(host::Storage::temporary_folder), -1);
  EXPECT_EQ(errno, EACCES);
}

}  // namespace
