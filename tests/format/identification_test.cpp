// The identification and version records at the beginning of a file.
#include <gtest/gtest.h>
#include <stdio.h>
#include <string>
#include <string_view>

#include "format/record.h"
#include "tests/format/input.h"
#include "tests/support/thrown_message.h"
#include "tests/testkit/hex.h"

namespace {

struct Identification {
  char magic[8] = {'?', '?', '?', '?', '?', '?', '?', '?'};
  int version = -1;
};

Identification read(FILE* stream) {
  Identification read;
  fld::FLD_I_HEAD_IVSN(stream, read.magic, read.version);
  return read;
}

std::string identification(std::string_view magic, int version) {
  return written([&](testkit::RecordWriter& writer) {
    writer.identification(magic);
    writer.version(version);
  });
}

TEST(Identification, GivesMagicAndVersion) {
  const Input input(identification("VTRL-FLD", 4) + kNext);
  const Identification read_back = read(input.stream());
  EXPECT_EQ(std::string_view(read_back.magic, 8), "VTRL-FLD");
  EXPECT_TRUE(fld::is_fld_magic(read_back.magic));
  EXPECT_EQ(read_back.version, 4);
  EXPECT_EQ(input.rest(), kNext);
}

TEST(Identification, GivesAnyVersion) {
  EXPECT_EQ(read(Input(identification("VTRL-FLD", 3)).stream()).version, 3);
  EXPECT_EQ(read(Input(identification("VTRL-FLD", -1)).stream()).version, -1);
}

TEST(Identification, MarkersAreNotLookedAt) {
  const Input input(hex("ffffffff 'VTRL-FLD' 00000000 12345678 00000004 7fffffff"));
  const Identification read_back = read(input.stream());
  EXPECT_TRUE(fld::is_fld_magic(read_back.magic));
  EXPECT_EQ(read_back.version, 4);
}

TEST(Identification, OfAnotherFormatIsNotOfAnFldFile) {
  const Identification read_back = read(Input(identification("VTRL-FLE", 4)).stream());
  EXPECT_EQ(std::string_view(read_back.magic, 8), "VTRL-FLE");
  EXPECT_FALSE(fld::is_fld_magic(read_back.magic));
}

TEST(Identification, OfAnotherFormatNeedsNoVersion) {
  const Input input(hex("00000008 'GARBAGE!' 00000008"));
  const Identification read_back = read(input.stream());
  EXPECT_FALSE(fld::is_fld_magic(read_back.magic));
  EXPECT_EQ(read_back.version, 0);
}

TEST(Identification, AFileTooShortForItIsNoFldFile) {
  const std::string bytes = identification("VTRL-FLD", 4);
  for (size_t length = 0; length < 16; ++length) {
    const Input input(std::string_view(bytes).substr(0, length));
    const Identification read_back = read(input.stream());
    EXPECT_FALSE(fld::is_fld_magic(read_back.magic)) << length;
    EXPECT_EQ(read_back.version, 0) << length;
  }
}

TEST(Identification, AFileThatCannotBeReadIsNoFldFile) {
  FILE* folder = fopen("/", "rb");
  ASSERT_NE(folder, nullptr);
  const Identification read_back = read(folder);
  EXPECT_NE(ferror(folder), 0);
  EXPECT_FALSE(fld::is_fld_magic(read_back.magic));
  EXPECT_EQ(read_back.version, 0);
  fclose(folder);
}

TEST(Identification, AFileThatEndsBeforeTheVersionIsABrokenFldFile) {
  const std::string bytes = identification("VTRL-FLD", 4);
  for (size_t length = 16; length < bytes.size(); ++length) {
    const Input input(std::string_view(bytes).substr(0, length));
    EXPECT_EQ(thrown_message([&] { read(input.stream()); }),
              "UNEXPECTED END OF FILE AT BYTE " + std::to_string(length) + ".");
  }
}

TEST(Identification, TheMagicIsComparedOverAllItsCharacters) {
  EXPECT_TRUE(fld::is_fld_magic("VTRL-FLD and more"));
  EXPECT_FALSE(fld::is_fld_magic("vtrl-fld"));
  EXPECT_FALSE(fld::is_fld_magic("VTRL-FL "));
  EXPECT_FALSE(fld::is_fld_magic("XTRL-FLD"));
}

}  // namespace
