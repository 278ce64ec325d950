// Reading through the buffer with seeks; files that cannot be opened.
#include "inspect/byte_reader.h"

#include "gtest/gtest.h"
#include <array>
#include <filesystem>
#include <span>
#include <sys/stat.h>
#include <vector>

#include "testkit/byte_sink.h"
#include "testkit/temporary_directory.h"

namespace {

using inspect::ByteReader;

std::string counted_bytes(std::size_t size) {
  std::string bytes(size, '\0');
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 7 + i / 256);
  return bytes;
}

TEST(ByteReader, GivesEveryByteInOrderInWholeUnits) {
  const std::string bytes = counted_bytes(1000008);
  inspect::StringSource source(bytes);
  ByteReader reader(source);
  std::string all;
  while (reader.remaining() > 0) {
    EXPECT_EQ(reader.position(), all.size());
    const inspect::Bytes piece = reader.take(reader.remaining(), 8);
    EXPECT_EQ(piece.size() % 8, 0U);
    EXPECT_GT(piece.size(), 0U);
    EXPECT_LE(piece.size(), ByteReader::kBuffer);
    all.append(piece.begin(), piece.end());
  }
  EXPECT_EQ(all, bytes);
}

TEST(ByteReader, JumpsAnywhere) {
  const std::string bytes = counted_bytes(600000);
  inspect::StringSource source(bytes);
  ByteReader reader(source);
  std::uint64_t place = 1;
  for (int i = 0; i < 20000; ++i) {
    place = (place * 1103515245 + 12345) % (bytes.size() - 300);
    const std::uint64_t there = i % 3 == 0 ? place : (reader.position() + place % 300) % (bytes.size() - 300);
    reader.seek(there);
    const std::size_t most = 1 + place % 300;
    const inspect::Bytes piece = reader.take(most);
    ASSERT_EQ(std::string(piece.begin(), piece.end()), bytes.substr(there, piece.size()));
    ASSERT_LE(piece.size(), most);
    const auto word = reader.text_at(place, 4);
    ASSERT_EQ(word, bytes.substr(place, 4));
  }
}

TEST(ByteReader, NothingBehindTheEnd) {
  inspect::StringSource source("\x01\x02\x03\x04\x05");
  ByteReader reader(source);
  EXPECT_EQ(reader.int32_at(1), 0x02030405);
  EXPECT_EQ(reader.int32_at(2), std::nullopt);
  EXPECT_EQ(reader.int32_at(~std::uint64_t{0}), std::nullopt);
  EXPECT_EQ(reader.text_at(3, 2), "\x04\x05");
  EXPECT_EQ(reader.text_at(4, 2), std::nullopt);
  EXPECT_EQ(reader.text_at(5, 0), "");
  EXPECT_EQ(reader.text_at(6, 0), std::nullopt);
}

TEST(ByteReader, TellsHowFarItGot) {
  inspect::StringSource source(counted_bytes(900000));
  std::uint64_t last = 0;
  ByteReader reader(source, [&](std::uint64_t done, std::uint64_t total) {
    EXPECT_GE(done, last);
    EXPECT_EQ(total, 900000U);
    last = done;
  });
  while (reader.remaining() > 0) reader.take(reader.remaining());
  EXPECT_GT(last, 500000U);
}

std::string reason(const std::filesystem::path& path) {
  try {
    const inspect::FileSource source(path);
    return "";
  } catch (const inspect::ReadError& error) {
    return error.what();
  }
}

TEST(FileSource, RefusesWhatIsNoRegularFile) {
  const testkit::TemporaryDirectory directory;
  EXPECT_EQ(reason(directory / "none"), "No such file or directory");
  EXPECT_EQ(reason(directory.path()), "is a directory");
  ASSERT_EQ(mkfifo((directory / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(reason(directory / "pipe"), "is not a regular file");
  EXPECT_EQ(reason("/dev/null"), "is not a regular file");
}

TEST(FileSource, NoticesAFileThatShrinks) {
  const testkit::TemporaryDirectory directory;
  testkit::write_bytes(directory / "file", "0123456789");
  inspect::FileSource source(directory / "file");
  testkit::write_bytes(directory / "file", "0123");
  ByteReader reader(source);
  EXPECT_THROW(reader.take(10), inspect::ReadError);
}

TEST(FileSource, AFileThatBecomesShorter) {
  const testkit::TemporaryDirectory directory;
  const std::filesystem::path path = directory / "a.fld";
  testkit::write_bytes(path, counted_bytes(100));
  inspect::FileSource source(path);
  EXPECT_EQ(source.size(), 100U);
  std::filesystem::resize_file(path, 40);
  std::vector<unsigned char> bytes(41);
  source.read(0, std::span(bytes).first(40));
  EXPECT_EQ(bytes[39], static_cast<unsigned char>(39 * 7));
  try {
    source.read(0, bytes);
    FAIL() << "nothing was noticed";
  } catch (const inspect::ReadError& error) {
    EXPECT_STREQ(error.what(), "became shorter while it was read");
  }
}

TEST(FileSource, AReadThatFailsIsTold) {
  const testkit::TemporaryDirectory directory;
  testkit::write_bytes(directory / "a.fld", "1234");
  inspect::FileSource source(directory / "a.fld");
  std::array<unsigned char, 4> bytes{};
  try {
    source.read(std::uint64_t{1} << 63, bytes);  // no offset of a file
    FAIL() << "it was read";
  } catch (const inspect::ReadError& error) {
    EXPECT_STREQ(error.what(), "Invalid argument");
  }
}

}  // namespace
