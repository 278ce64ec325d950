// Exceptions that leave an entry point become a host::Error that names it.
#include "gtest/gtest.h"
#include <string>

#include "host/error.h"
#include "host/session.h"
#include "tests/host/fake_reader.h"
#include "tests/host/fake_session.h"

namespace {

class Exceptions : public testing::Test {
 protected:
  // Opens a file of the fake reader that fails, and returns the error.
  host::Error opening_error(const char* name, bool capture = false) {
    host::SessionOptions options;
    options.capture_diagnostics = capture;
    host::Session session(reader.library, options);
    try {
      session.open(fake::file(name));
    } catch (const host::Error& error) {
      EXPECT_FALSE(session.is_open());
      EXPECT_EQ(error.entry_point(), "USERD_set_filenames");
      return error;
    }
    ADD_FAILURE() << name << " opens";
    return host::Error("opens");
  }

  fake::Reader reader;
};

TEST_F(Exceptions, OfTheStandardLibraryKeepTheirMessage) {
  const host::Error error = opening_error(fake::kThrowsStandard);
  EXPECT_EQ(error.reason(), "the sky is falling");
  EXPECT_STREQ(error.what(), "USERD_set_filenames: the sky is falling");
}

TEST_F(Exceptions, OfTheReaderKeepTheirMessage) {
  EXPECT_EQ(opening_error(fake::kThrowsReader).reason(), "UNEXPECTED END OF FILE");
}

TEST_F(Exceptions, OfAnotherTypeAreNamedByIt) {
  EXPECT_EQ(opening_error(fake::kThrowsInt).reason(), "an exception of type int");
  EXPECT_EQ(opening_error(fake::kThrowsUnknown).reason(),
            "an exception of type (anonymous namespace)::UnknownTrouble");
}

TEST_F(Exceptions, ArriveWhileDiagnosticsAreCaptured) {
  EXPECT_EQ(opening_error(fake::kThrowsReader, true).reason(), "UNEXPECTED END OF FILE");
}

TEST_F(Exceptions, LeaveTheSessionUsable) {
  host::Session session(reader.library);
  EXPECT_THROW(session.open(fake::file(fake::kThrowsInt)), host::Error);
  session.open(fake::file(fake::kTwoSets));
  EXPECT_EQ(session.parts().size(), 6U);
}

TEST_F(Exceptions, AFailedOpeningTellsWhatTheReaderWrote) {
  const host::Error error = opening_error(fake::kFails, true);
  EXPECT_EQ(error.reason(), "ERROR : NO NODES; FAILED TO READ GEOMETRY.");
}

TEST_F(Exceptions, AFailedOpeningWithoutTextTellsTheResult) {
  EXPECT_EQ(opening_error(fake::kFailsSilently, true).reason(), "the result is -1");
}

TEST_F(Exceptions, OfAnOpeningNameTheFileThatWasReadLast) {
  const host::Error error = opening_error(fake::kFails, true);
  EXPECT_EQ(error.file(), fake::file(fake::kFails));
  EXPECT_FALSE(error.step().has_value());
  EXPECT_TRUE(error.text_with_file().ends_with(" (in " + error.file() + ")")) << error.text_with_file();
  // Nothing was traced, or nothing captured.
  EXPECT_EQ(opening_error(fake::kThrowsReader, true).file(), "");
  EXPECT_EQ(opening_error(fake::kFails).file(), "");
}

}  // namespace
