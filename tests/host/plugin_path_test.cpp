#include "host/plugin_path.h"

#include "gtest/gtest.h"
#include <cstdlib>
#include <dlfcn.h>
#include <optional>
#include <string>

#include "host/error.h"

namespace {

// Sets the environment variable that names the plug-in for one test and puts it back.
class PluginPath : public testing::Test {
 protected:
  void SetUp() override {
    const char* value = std::getenv(host::kPluginVariable);
    if (value != nullptr) before_ = value;
    unsetenv(host::kPluginVariable);
  }
  void TearDown() override {
    if (before_) {
      setenv(host::kPluginVariable, before_->c_str(), 1);
    } else {
      unsetenv(host::kPluginVariable);
    }
  }

 private:
  std::optional<std::string> before_;
};

TEST_F(PluginPath, TakesTheGivenPathBeforeTheVariable) {
  setenv(host::kPluginVariable, "/named/by/variable.so", 1);
  EXPECT_EQ(host::find_plugin("/given.so"), "/given.so");
}

TEST_F(PluginPath, TakesWhatTheVariableNames) {
  setenv(host::kPluginVariable, "/named/by/variable.so", 1);
  EXPECT_EQ(host::find_plugin(), "/named/by/variable.so");
}

TEST_F(PluginPath, FindsThePluginBesideTheExecutable) {
  const auto folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
  EXPECT_EQ(host::find_plugin(), folder / host::kPluginFile);
}

TEST_F(PluginPath, TakesAnEmptyVariableAsNone) {
  setenv(host::kPluginVariable, "", 1);
  EXPECT_EQ(host::find_plugin().filename(), host::kPluginFile);
}

TEST_F(PluginPath, FindsThePluginInTheFolderOfALibraryOrAbove) {
  const auto folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
  EXPECT_EQ(host::find_plugin_near(&host::kPluginFile), folder / host::kPluginFile);
  // The C library is in a folder without the plug-in.
  try {
    host::find_plugin_near(dlsym(RTLD_DEFAULT, "getenv"));
    ADD_FAILURE() << "found";
  } catch (const host::Error& error) {
    EXPECT_NE(error.reason().find("libuserd-fld.so is neither in "), std::string::npos) << error.what();
  }
  setenv(host::kPluginVariable, "/named/by/variable.so", 1);
  EXPECT_EQ(host::find_plugin_near(nullptr), "/named/by/variable.so");
}

}  // namespace
