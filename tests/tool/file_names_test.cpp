// File names on the command line, and names of files that are written.
#include "tool/file_names.h"

#include "gtest/gtest.h"
#include <CLI/CLI.hpp>
#include <string>

#include "tool/exit_status.h"

namespace {

TEST(FileNames, PlainOnesHaveLettersAndDigits) {
  EXPECT_EQ(tool::plain_name("a-Z_09"), "a-Z_09");
  EXPECT_EQ(tool::plain_name("p/q r.s\xc3\xa4"), "p_q_r_s__");
  EXPECT_EQ(tool::plain_name(std::string(61, 'x')), std::string(60, 'x'));
  EXPECT_EQ(tool::plain_name(""), "");
}

TEST(FileNames, TheirExtensionIsInLowerCase) {
  EXPECT_EQ(tool::extension_of("/a.b/c.PNG"), ".png");
  EXPECT_EQ(tool::extension_of("/a.b/c"), "");
}

TEST(FileNames, AnExtensionIsOneOfThoseOffered) {
  EXPECT_NO_THROW(tool::check_extension("a.CSV", {".csv", ".json"}));
  EXPECT_NO_THROW(tool::check_extension("a.json", {".csv", ".json"}));
  EXPECT_NO_THROW(tool::check_extension("a", {".csv"}));
  EXPECT_NO_THROW(tool::check_extension("-", {".csv"}));
  EXPECT_NO_THROW(tool::check_extension("/dev/null", {".csv"}));
  try {
    tool::check_extension("a.txt", {".csv", ".json"});
    ADD_FAILURE() << "taken";
  } catch (const tool::CommandError& error) {
    EXPECT_EQ(error.status(), tool::ExitStatus::usage);
    EXPECT_STREQ(error.what(), "a.txt: cannot write '.txt' files: the name has to end in .csv or .json");
  }
}

TEST(FileNames, AreNotEmpty) {
  std::string none;
  std::string some = "a";
  EXPECT_EQ(tool::file_name()(none), "the file name is empty");
  EXPECT_EQ(tool::file_name()(some), "");
  EXPECT_EQ(tool::not_empty()(none), "the value is empty");
  EXPECT_EQ(tool::not_empty()(some), "");
}

}  // namespace
