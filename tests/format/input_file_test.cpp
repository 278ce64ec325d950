// Opening files.
#include "format/input_file.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/stat.h>

#include "testkit/byte_sink.h"
#include "testkit/temporary_directory.h"

namespace {

using fld::Access;
using fld::InputFile;

class InputFiles : public testing::TestWithParam<Access> {
 protected:
  static bool opens(const std::filesystem::path& path) {
    return static_cast<bool>(InputFile(path.string(), GetParam()));
  }

  testkit::TemporaryDirectory folder_;
};

INSTANTIATE_TEST_SUITE_P(For, InputFiles, testing::Values(Access::walk, Access::bulk),
                         [](const auto& info) { return info.param == Access::walk ? "Walk" : "Bulk"; });

long open_descriptors() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

TEST_P(InputFiles, AreReadFromTheirBeginning) {
  testkit::write_bytes(folder_ / "file", "abc");
  const InputFile file((folder_ / "file").string(), GetParam());
  ASSERT_TRUE(file);
  EXPECT_EQ(fgetc(file.stream()), 'a');
  EXPECT_EQ(fgetc(file.stream()), 'b');
  EXPECT_EQ(fgetc(file.stream()), 'c');
  EXPECT_EQ(fgetc(file.stream()), EOF);
}

TEST_P(InputFiles, LargerThanAnyBufferAreReadWhole) {
  std::string bytes(1000003, '\0');
  for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i % 251);
  testkit::write_bytes(folder_ / "file", bytes);
  const InputFile file((folder_ / "file").string(), GetParam());
  std::string read(bytes.size(), '?');
  EXPECT_EQ(fread(read.data(), 1, read.size(), file.stream()), bytes.size());
  EXPECT_TRUE(read == bytes);
  fseek(file.stream(), 251L * 7, SEEK_SET);
  EXPECT_EQ(fgetc(file.stream()), 0);
}

TEST_P(InputFiles, AnEmptyFileIsAFile) {
  testkit::write_bytes(folder_ / "file", "");
  EXPECT_TRUE(opens(folder_ / "file"));
}

TEST_P(InputFiles, ALinkToAFileIsAFile) {
  testkit::write_bytes(folder_ / "file", "abc");
  std::filesystem::create_symlink("file", folder_ / "link");
  EXPECT_TRUE(opens(folder_ / "link"));
}

TEST_P(InputFiles, ThatAreMissingCannotBeOpened) {
  EXPECT_FALSE(opens(folder_ / "missing"));
  EXPECT_FALSE(opens(""));
  EXPECT_FALSE(opens(std::string(100000, 'x')));
}

TEST_P(InputFiles, AFolderCannotBeOpened) {
  EXPECT_FALSE(opens(folder_.path()));
}

TEST_P(InputFiles, ADeviceCannotBeOpened) {
  EXPECT_FALSE(opens("/dev/null"));
  EXPECT_FALSE(opens("/dev/zero"));
}

TEST_P(InputFiles, ANamedPipeCannotBeOpenedAndIsNotWaitedFor) {
  ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0600), 0);
  EXPECT_FALSE(opens(folder_ / "pipe"));
}

TEST_P(InputFiles, AreClosedAgain) {
  testkit::write_bytes(folder_ / "file", "abc");
  ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0600), 0);
  const long before = open_descriptors();
  opens(folder_ / "file");
  opens(folder_ / "pipe");
  opens(folder_.path());
  opens("/dev/null");
  EXPECT_EQ(open_descriptors(), before);
}

}  // namespace
