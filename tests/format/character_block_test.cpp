// Data blocks of characters.
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "format/data_block.h"
#include "tests/format/input.h"
#include "tests/support/thrown_message.h"

namespace {

using testkit::Block;
using testkit::Rule;

using Reader = void (*)(FILE*, int, char*);

// The content of a buffer of `size` bytes, filled with '#' before the read.
std::string buffer_after(Reader read, const std::string& bytes, int n, size_t size) {
  const Input input(bytes + kNext);
  std::string buffer(size + 1, '#');
  read(input.stream(), n, buffer.data());
  EXPECT_EQ(buffer.back(), '#') << "written behind the buffer";
  EXPECT_EQ(input.rest(), kNext);
  buffer.pop_back();
  return buffer;
}

std::string characters(const Block& block, int n) {
  return buffer_after(fld::FLDV4_I_CHARarray, bytes_of(block), n, static_cast<size_t>(n) + 1);
}

std::string characters80(const Block& block, int n) {
  return buffer_after(fld::FLDV4_I_CHARarray80, bytes_of(block), n, 81);
}

std::string field(const std::string& bytes, int n) {
  const Input input(bytes + kNext);
  std::string text = fld::read_field(input.stream(), n);
  EXPECT_EQ(input.rest(), kNext);
  return text;
}

std::string error_of(const std::string& bytes, int n) {
  const Input input(bytes);
  std::string buffer(static_cast<size_t>(n) + 1, '#');
  return thrown_message([&] { fld::FLDV4_I_CHARarray(input.stream(), n, buffer.data()); });
}

std::string nul(size_t count) {
  return std::string(count, '\0');
}

TEST(CharacterBlock, OfThirtyTwoEndsWithNul) {
  EXPECT_EQ(characters(Block::characters("Pressure [Pa]", 32), 32),
            "Pressure [Pa]" + std::string(19, ' ') + nul(1));
}

TEST(CharacterBlock, ShorterThanItsBufferIsFilledUpWithNul) {
  EXPECT_EQ(characters(Block::characters("abc"), 8), "abc" + nul(6));
}

TEST(CharacterBlock, LongerThanItsBufferIsReadToItsEndAndCut) {
  EXPECT_EQ(characters(Block::characters("abcdefgh"), 3), "abc" + nul(1));
  EXPECT_EQ(characters(Block::characters(std::string(100000, 'x')), 32), std::string(32, 'x') + nul(1));
}

TEST(CharacterBlock, OfNoCharactersIsEmpty) {
  EXPECT_EQ(buffer_after(fld::FLDV4_I_CHARarray, bytes_of(Rule{1, 0, 1}) + nul(8), 4, 5), nul(5));
  EXPECT_EQ(characters(Block::characters("abc"), 0), nul(1));
}

TEST(CharacterBlock, IsOneRecordWhateverTheRuleSays) {
  EXPECT_EQ(characters(Block::characters("abcd").with_rule({77, 4, 0}), 4), "abcd" + nul(1));
  EXPECT_EQ(characters(Block::characters("abcd").with_rule({-1, 4, 5}), 4), "abcd" + nul(1));
}

TEST(CharacterBlock, HasAsManyCharactersAsTheRuleSays) {
  // The record holds three more, which are then read as its marker and so on.
  const Input input(bytes_of(Block::characters("abcdefg").with_rule({1, 3, 1})));
  std::string buffer = "#########";
  fld::FLDV4_I_CHARarray(input.stream(), 8, buffer.data());
  EXPECT_EQ(buffer, "abc" + nul(6));
  EXPECT_EQ(input.position(), 20 + 4 + 3 + 4);
}

TEST(CharacterBlock, BytesAreNotInterpreted) {
  const std::string bytes("\xff\x00\x80 a", 5);
  EXPECT_EQ(characters(Block::characters(bytes), 5), bytes + nul(1));
}

TEST(CharacterBlock, ANegativeLengthIsAnError) {
  EXPECT_EQ(error_of(bytes_of(Block::characters("abcd").with_rule({1, -1, 1})), 4),
            "NEGATIVE COUNT -1 AT BYTE 20.");
  EXPECT_EQ(
      error_of(bytes_of(Block::characters("abcd").with_rule({1, std::numeric_limits<int>::min(), 1})), 4),
      "NEGATIVE COUNT -2147483648 AT BYTE 20.");
}

TEST(CharacterBlock, ALengthBeyondTheFileIsAnError) {
  EXPECT_EQ(error_of(bytes_of(Block::characters("abcd").with_rule({1, 0x7fffffff, 1})), 4),
            "COUNT 2147483647 EXCEEDS THE REST OF THE FILE AT BYTE 20.");
  EXPECT_NE(error_of(bytes_of(Block::characters("abcd").with_rule({1, 9, 1})), 4), "nothing was thrown");
}

TEST(CharacterBlock, CutOffAnywhereIsAnUnexpectedEnd) {
  const std::string bytes = bytes_of(Block::characters("abcdef"));
  for (size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_EQ(error_of(bytes.substr(0, length), 6),
              "UNEXPECTED END OF FILE AT BYTE " + std::to_string(length) + ".");
  }
  for (size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_NE(error_of(bytes.substr(0, length), 2), "nothing was thrown") << length;
  }
}

TEST(CharacterBlock80, OfFewerCharactersIsFilledUpWithNul) {
  EXPECT_EQ(characters80(Block::characters("Rotate", 16), 16), "Rotate" + std::string(10, ' ') + nul(65));
}

TEST(CharacterBlock80, OfEightyEndsWithNul) {
  EXPECT_EQ(characters80(Block::characters(std::string(80, 'x')), 80), std::string(80, 'x') + nul(1));
}

TEST(CharacterBlock80, OfMoreIsCutAtEighty) {
  const std::string text = std::string(80, 'x') + "yz";
  EXPECT_EQ(characters80(Block::characters(text), 82), std::string(80, 'x') + nul(1));
  EXPECT_EQ(characters80(Block::characters(text + std::string(5000, 'y')), 5082),
            std::string(80, 'x') + nul(1));
}

TEST(CharacterBlock80, OfMoreThanAnnouncedIsCutAtWhatWasAnnounced) {
  EXPECT_EQ(characters80(Block::characters("abcdefgh"), 4), "abcd" + nul(77));
}

TEST(CharacterField, LosesItsTrailingBlanks) {
  EXPECT_EQ(field(bytes_of(Block::characters("wall", 16)), 16), "wall");
  EXPECT_EQ(field(bytes_of(Block::characters(" two words ", 16)), 16), " two words");
}

TEST(CharacterField, MayBeFullOrEmpty) {
  EXPECT_EQ(field(bytes_of(Block::characters("sixteen letters.")), 16), "sixteen letters.");
  EXPECT_EQ(field(bytes_of(Block::characters("", 16)), 16), "");
  EXPECT_EQ(field(bytes_of(Rule{1, 0, 1}) + nul(8), 16), "");
  EXPECT_EQ(field(bytes_of(Rule{1, 0, 1}) + nul(8), 0), "");
}

TEST(CharacterField, EndsAtANul) {
  EXPECT_EQ(field(bytes_of(Block::characters(std::string("ab\0cd   ", 8))), 8), "ab");
}

TEST(CharacterField, LongerThanAnnouncedIsCut) {
  EXPECT_EQ(field(bytes_of(Block::characters("abcdefgh")), 4), "abcd");
  EXPECT_EQ(field(bytes_of(Block::characters("ab  efgh")), 4), "ab");
}

TEST(CharacterField, ShorterThanAnnouncedKeepsItsBlanks) {
  // The rest of the field is NULs, and a NUL stops the trimming.
  EXPECT_EQ(field(bytes_of(Block::characters("ab  ")), 8), "ab  ");
}

}  // namespace
