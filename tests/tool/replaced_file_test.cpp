// Files that are there completely or not at all, and what else a path may lead to.
#include "tool/replaced_file.h"

#include "gtest/gtest.h"
#include <array>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "testkit/temporary_directory.h"
#include "tool/exit_status.h"

namespace {

namespace fs = std::filesystem;
using tool::replace_file;
using tool::ReplacedFile;

class Replaced : public testing::Test {
 protected:
  Replaced() : path(directory / "a.csv") {}

  static std::string text_of(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  static void make(const fs::path& path, const std::string& text) { std::ofstream(path) << text; }

  // What is in the directory.
  std::size_t count() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(path.parent_path()), fs::directory_iterator()));
  }

  // The message of writing "new" to a path.
  static std::string error_of(const fs::path& path) {
    try {
      replace_file(path, "new");
    } catch (const tool::CommandError& error) {
      EXPECT_EQ(error.status(), tool::ExitStatus::failure);
      return error.what();
    }
    return "no error";
  }

  testkit::TemporaryDirectory directory;
  fs::path path;
};

TEST_F(Replaced, IsThereWhenItIsFinished) {
  ReplacedFile file(path);
  file.write("one");
  file.write(" two");
  EXPECT_FALSE(fs::exists(path));
  file.finish();
  EXPECT_EQ(text_of(path), "one two");
  EXPECT_EQ(count(), 1U);
}

TEST_F(Replaced, TheOldOneStaysWhenItIsNot) {
  make(path, "old");
  {
    ReplacedFile file(path);
    file.write("new");
    EXPECT_EQ(text_of(path), "old");
  }
  EXPECT_EQ(text_of(path), "old");
  EXPECT_EQ(count(), 1U);
}

TEST_F(Replaced, FilesBesideItStay) {
  const std::string taken = "." + path.filename().string() + "." + std::to_string(getpid()) + "-0";
  make(path.string() + ".tmp", "the user's");
  make(directory / taken, "left by a program that was killed");
  replace_file(path, "new");
  EXPECT_EQ(text_of(path), "new");
  EXPECT_EQ(text_of(path.string() + ".tmp"), "the user's");
  EXPECT_EQ(text_of(directory / taken), "left by a program that was killed");
  EXPECT_EQ(count(), 3U);
}

TEST_F(Replaced, KeepsThePermissions) {
  make(path, "old");
  fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
  replace_file(path, "new");
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(Replaced, ANewOneHasThoseOfTheProcess) {
  const mode_t before = umask(027);
  replace_file(path, "new");
  umask(before);
  EXPECT_EQ(fs::status(path).permissions(),
            fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}

TEST_F(Replaced, ASymbolicLinkStaysOne) {
  fs::create_directory(directory / "far");
  make(directory / "far/b.csv", "old");
  fs::create_symlink("far/b.csv", directory / "hop");
  fs::create_symlink("hop", path);
  replace_file(path, "new");
  EXPECT_TRUE(fs::is_symlink(path));
  EXPECT_TRUE(fs::is_symlink(directory / "hop"));
  EXPECT_EQ(text_of(directory / "far/b.csv"), "new");
  EXPECT_EQ(count(), 3U);
}

TEST_F(Replaced, ASymbolicLinkToNothingGetsItsFile) {
  fs::create_symlink("none.csv", path);
  replace_file(path, "new");
  EXPECT_TRUE(fs::is_symlink(path));
  EXPECT_EQ(text_of(directory / "none.csv"), "new");
}

TEST_F(Replaced, ALinkThatLeadsToItselfIsAnError) {
  fs::create_symlink("a.csv", path);
  EXPECT_EQ(error_of(path), path.string() + ": cannot write: Too many levels of symbolic links");
}

TEST_F(Replaced, WhatIsNoRegularFileIsWrittenInPlace) {
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  // Open at both ends, so that nobody waits.
  const int pipe = open(path.c_str(), O_RDWR | O_CLOEXEC);
  ASSERT_GE(pipe, 0);
  replace_file(path, "new");
  std::array<char, 10> bytes{};
  EXPECT_EQ(read(pipe, bytes.data(), bytes.size()), 3);
  EXPECT_STREQ(bytes.data(), "new");
  close(pipe);
  EXPECT_TRUE(fs::is_fifo(path));
  EXPECT_EQ(count(), 1U);
  replace_file("/dev/null", "new");
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(Replaced, SaysWhyItCannotBeWritten) {
  EXPECT_EQ(error_of("/dev/full"), "/dev/full: cannot write: No space left on device");
  EXPECT_EQ(error_of("/no/such/a.csv"), "/no/such/a.csv: cannot write: No such file or directory");
  make(path, "old");
  EXPECT_EQ(error_of(path / "b"), (path / "b").string() + ": cannot write: Not a directory");
  fs::create_directory(directory / "folder");
  EXPECT_EQ(error_of(directory / "folder"),
            (directory / "folder").string() + ": cannot write: Is a directory");
}

TEST_F(Replaced, PermissionsHold) {
  if (geteuid() == 0) GTEST_SKIP() << "root may write everywhere";
  make(path, "old");
  fs::permissions(path, fs::perms::owner_read);
  EXPECT_EQ(error_of(path), path.string() + ": cannot write: Permission denied");
  EXPECT_EQ(text_of(path), "old");
  // In a folder that takes no new files an old one can be written all the same.
  fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
  fs::permissions(path.parent_path(), fs::perms::owner_read | fs::perms::owner_exec);
  replace_file(path, "new");
  EXPECT_EQ(text_of(path), "new");
  EXPECT_EQ(error_of(directory / "b.csv"),
            (directory / "b.csv").string() + ": cannot write: Permission denied");
  fs::permissions(path.parent_path(), fs::perms::owner_all);
}

}  // namespace
