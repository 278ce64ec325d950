// The checks behind every read.
#include "format/read_checks.h"

#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "tests/format/input.h"
#include "tests/support/thrown_message.h"
#include "tests/testkit/hex.h"

namespace {

TEST(ReadElements, TurnsElementsRound) {
  const Input input(hex("00000001 ffffffff"));
  std::array<int, 2> values = {};
  fld::read_elements(input.stream(), values.data(), 4, 2);
  EXPECT_EQ(values, (std::array<int, 2>{1, -1}));
}

TEST(ReadElements, UpToTheLastByteIsNoError) {
  const Input input("abcdefgh");
  std::string text(8, '#');
  fld::read_elements(input.stream(), text.data(), 1, 8);
  EXPECT_EQ(text, "abcdefgh");
}

TEST(ReadElements, OfNothingAtTheEndIsNoError) {
  const Input input("");
  fld::read_elements(input.stream(), nullptr, 4, 0);
  fld::read_elements(input.stream(), nullptr, 1, 0);
}

TEST(ReadElements, BeyondTheLastByteIsAnUnexpectedEnd) {
  std::array<int, 100> values = {};
  for (const size_t width : {1U, 2U, 3U, 4U, 8U}) {
    const Input input("abc");
    EXPECT_EQ(thrown_message([&] { fld::read_elements(input.stream(), values.data(), width, 4); }),
              "UNEXPECTED END OF FILE AT BYTE 3.");
  }
}

TEST(ReadElements, ThatTheSystemRefusesAreAReadError) {
  FILE* folder = fopen("/", "rb");
  ASSERT_NE(folder, nullptr);
  int value = 0;
  EXPECT_EQ(thrown_message([&] { fld::read_elements(folder, &value, 4, 1); }), "READ ERROR AT BYTE 0.");
  EXPECT_EQ(thrown_message([&] { fld::read_elements(folder, &value, 1, 1); }), "READ ERROR AT BYTE 0.");
  fclose(folder);
}

TEST(CheckCount, AcceptsWhatTheRestOfTheFileCanHold) {
  const Input input(std::string(10000, 'x'));
  fld::check_count(input.stream(), 10000, 1);
  fld::check_count(input.stream(), 2500, 4);
  fld::check_count(input.stream(), 1250, 8);
  fld::check_count(input.stream(), 0, 8);
}

TEST(CheckCount, RefusesMoreThanTheRestOfTheFileCanHold) {
  const Input input(std::string(10000, 'x'));
  fseek(input.stream(), 100, SEEK_SET);
  const auto message = [&](int64_t count, size_t width) {
    return thrown_message([&] { fld::check_count(input.stream(), count, width); });
  };
  EXPECT_EQ(message(9900, 1), "nothing was thrown");
  EXPECT_EQ(message(9901, 1), "COUNT 9901 EXCEEDS THE REST OF THE FILE AT BYTE 100.");
  EXPECT_EQ(message(2475, 4), "nothing was thrown");
  EXPECT_EQ(message(2476, 4), "COUNT 2476 EXCEEDS THE REST OF THE FILE AT BYTE 100.");
  EXPECT_EQ(message(1237, 8), "nothing was thrown");
  EXPECT_EQ(message(1238, 8), "COUNT 1238 EXCEEDS THE REST OF THE FILE AT BYTE 100.");
  EXPECT_EQ(input.position(), 100);
}

TEST(CheckCount, RefusesCountsWhoseBytesWouldNotFitInANumber) {
  const Input input(std::string(10000, 'x'));
  EXPECT_EQ(
      thrown_message([&] { fld::check_count(input.stream(), std::numeric_limits<int64_t>::max() / 2, 8); }),
      "COUNT 4611686018427387903 EXCEEDS THE REST OF THE FILE AT BYTE 0.");
}

TEST(CheckCount, RefusesNegativeCounts) {
  const Input input("abcdefgh");
  fseek(input.stream(), 3, SEEK_SET);
  EXPECT_EQ(thrown_message([&] { fld::check_count(input.stream(), -1, 4); }), "NEGATIVE COUNT -1 AT BYTE 3.");
  EXPECT_EQ(thrown_message([&] { fld::check_count(input.stream(), -1, 0); }), "NEGATIVE COUNT -1 AT BYTE 3.");
}

TEST(CheckCount, RefusesLargeCountsBehindTheEndOfTheFile) {
  const Input input("abc");
  fseek(input.stream(), 100, SEEK_SET);
  EXPECT_EQ(thrown_message([&] { fld::check_count(input.stream(), 1000000, 4); }),
            "COUNT 1000000 EXCEEDS THE REST OF THE FILE AT BYTE 100.");
}

TEST(StepOver, GoesForward) {
  const Input input("abcdefgh");
  fld::step_over(input.stream(), 3);
  EXPECT_EQ(fgetc(input.stream()), 'd');
  fld::step_over(input.stream(), 0);
  EXPECT_EQ(fgetc(input.stream()), 'e');
}

TEST(StepOver, NeverGoesBack) {
  const Input input("abcdefgh");
  fseek(input.stream(), 5, SEEK_SET);
  EXPECT_EQ(thrown_message([&] { fld::step_over(input.stream(), -1); }),
            "NEGATIVE RECORD LENGTH -1 AT BYTE 5.");
  EXPECT_EQ(input.position(), 5);
}

TEST(StepOver, BeyondTheEndIsFoundByTheNextRead) {
  const Input input("abcdefgh");
  fld::step_over(input.stream(), 100);
  char next = 0;
  EXPECT_EQ(thrown_message([&] { fld::read_elements(input.stream(), &next, 1, 1); }),
            "UNEXPECTED END OF FILE AT BYTE 100.");
}

TEST(StepOver, WhatCannotBeSoughtInIsAReadError) {
  cookie_io_functions_t functions = {};
  functions.read = [](void*, char*, size_t) -> ssize_t { return 0; };
  FILE* stream = fopencookie(nullptr, "rb", functions);
  ASSERT_NE(stream, nullptr);
  EXPECT_THROW(fld::step_over(stream, 3), fld::FLDReadException);
  fclose(stream);
}

}  // namespace
