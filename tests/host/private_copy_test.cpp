// A second instance of a reader library beside the first one.
#include "host/private_copy.h"

#include "gtest/gtest.h"
#include <string>

#include "host/error.h"
#include "host/library.h"

namespace {

TEST(PrivateCopy, IsAnotherLibraryThanItsOriginal) {
  const host::Library original(FAKE_READER);
  const host::PrivateCopy copy(FAKE_READER);
  const host::Library other(copy.path());
  EXPECT_NE(original.entry_points().get_number_of_variables.function,
            other.entry_points().get_number_of_variables.function);
  // The same file again is the same library.
  const host::Library same(FAKE_READER);
  EXPECT_EQ(original.entry_points().get_number_of_variables.function,
            same.entry_points().get_number_of_variables.function);
}

TEST(PrivateCopy, TellsWhatCannotBeCopied) {
  try {
    const host::PrivateCopy copy("/no/such/library.so");
    FAIL() << "a library that is not there was copied";
  } catch (const host::Error& error) {
    EXPECT_EQ(std::string(error.what()),
              "cannot copy the reader library /no/such/library.so: No such file or directory");
  }
}

}  // namespace
