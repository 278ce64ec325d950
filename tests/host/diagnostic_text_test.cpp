#include "host/diagnostic_text.h"

#include "gtest/gtest.h"
#include <string>
#include <vector>

namespace {

TEST(DiagnosticText, ReasonIsTheLastTwoLinesWithoutTraces) {
  EXPECT_EQ(host::reason_in_diagnostics("one\ntwo\nIN ( FLD): /a.fld\nthree"), "two; three");
  EXPECT_EQ(host::reason_in_diagnostics("This is not FLD file.\n"), "This is not FLD file.");
}

TEST(DiagnosticText, NoReasonInTracesAlone) {
  EXPECT_EQ(host::reason_in_diagnostics("IN ( FLD): /a.fld\n"), "");
  EXPECT_EQ(host::reason_in_diagnostics(""), "");
}

TEST(DiagnosticText, TracedFilesOnceInOrder) {
  EXPECT_EQ(
      host::traced_files("IN ( FLD): /a b.fld\nnoise\nIN ( FLD): /c.fld\nIN ( FLD): /a b.fld\nread done\n"),
      (std::vector<std::string>{"/a b.fld", "/c.fld"}));
}

TEST(DiagnosticText, TellsAGeometryThatWasNotBroughtIn) {
  EXPECT_TRUE(host::tells_geometry_failure("ERROR : X\nFAILED TO READ GEOMETRY DATA IN /a.fld.\n"));
  EXPECT_TRUE(host::tells_geometry_failure("error : not found geometry data in current time.\n"));
  EXPECT_FALSE(host::tells_geometry_failure("IN ( FLD): /a.fld\nread done\n"));
}

}  // namespace
