// The error types.
#include "support/errors.h"

#include <gtest/gtest.h>
#include <string>
#include <type_traits>

#include "tests/support/thrown_message.h"

namespace {

using fld::FLDException;
using fld::FLDReadException;
using fld::MemoryAllocException;

static_assert(std::has_virtual_destructor_v<FLDException>);
static_assert(std::is_base_of_v<FLDException, FLDReadException>);
static_assert(std::is_base_of_v<FLDException, MemoryAllocException>);
static_assert(!std::is_base_of_v<FLDReadException, MemoryAllocException>);
static_assert(!std::is_base_of_v<MemoryAllocException, FLDReadException>);
static_assert(!std::is_convertible_v<std::string, FLDException>, "a text is not an error by itself");

TEST(Errors, CarryTheirMessage) {
  EXPECT_STREQ(FLDException("SOMETHING").getMessage(), "SOMETHING");
  EXPECT_STREQ(FLDReadException("ERROR IN FLDV4_I_END").getMessage(), "ERROR IN FLDV4_I_END");
  EXPECT_STREQ(MemoryAllocException("NOT ENOUGH MEMORY").getMessage(), "NOT ENOUGH MEMORY");
}

TEST(Errors, KeepAMessageOfTheirOwn) {
  std::string text = "A TEXT THAT IS TOO LONG TO BE KEPT INSIDE OF A STRING OBJECT";
  const FLDReadException error(text);
  text.assign(text.size(), '-');
  EXPECT_STREQ(error.getMessage(), "A TEXT THAT IS TOO LONG TO BE KEPT INSIDE OF A STRING OBJECT");
}

TEST(Errors, AReadErrorIsCaughtAsTheBase) {
  EXPECT_EQ(thrown_message<FLDException>([] { throw FLDReadException("BAD DATA"); }), "BAD DATA");
}

TEST(Errors, AMemoryErrorIsCaughtAsTheBase) {
  EXPECT_EQ(thrown_message<FLDException>([] { throw MemoryAllocException("NO MEMORY"); }), "NO MEMORY");
}

TEST(Errors, TheTwoKindsAreToldApart) {
  EXPECT_THROW(thrown_message<FLDReadException>([] { throw MemoryAllocException("NO MEMORY"); }),
               MemoryAllocException);
}

}  // namespace
