#include "host/plugin_path.h"

#include "gtest/gtest.h"
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "host/error.h"
#include "testkit/byte_sink.h"
#include "testkit/temporary_directory.h"

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

// Writes a file of this path, with the folders that it needs.
void put(const std::filesystem::path& path) {
  std::filesystem::create_directories(path.parent_path());
  testkit::write_bytes(path, "");
}

TEST_F(PluginPath, IsBesideTheProgramOrInTheLibraryFolderOfItsInstallation) {
  const testkit::TemporaryDirectory directory;
  const auto program = directory / "bin" / "program";
  const auto in_lib = directory.path() / HOST_LIBRARY_FOLDER / host::kPluginFile;
  const auto beside = directory / "bin" / host::kPluginFile;
  try {
    host::find_plugin_of_program(program);
    ADD_FAILURE() << "found";
  } catch (const host::Error& error) {
    EXPECT_EQ(error.reason(), "cannot find the reader plug-in: neither " + beside.string() + " nor " +
                                  in_lib.string() + " exists and FLD_PLUGIN is not set");
  }
  put(in_lib);
  EXPECT_EQ(host::find_plugin_of_program(program), in_lib);
  put(beside);
  EXPECT_EQ(host::find_plugin_of_program(program), beside);
}

TEST_F(PluginPath, OfAProgramInAFolderOfLibexecIsInTheLibraryFolder) {
  const testkit::TemporaryDirectory directory;
  const auto in_lib = directory.path() / HOST_LIBRARY_FOLDER / host::kPluginFile;
  put(in_lib);
  EXPECT_EQ(host::find_plugin_of_program(directory / "libexec" / "folder" / "program"), in_lib);
}

TEST_F(PluginPath, IsUpToThreeFoldersAboveALibrary) {
  const testkit::TemporaryDirectory directory;
  put(directory / host::kPluginFile);
  for (const char* folder : {"1", "1/2/3", "1/2/3/4"}) {
    const auto library = directory / folder / "library.so";
    put(library);
    std::filesystem::copy_file(FAKE_READER_MINIMAL, library,
                               std::filesystem::copy_options::overwrite_existing);
    const auto close = [](void* handle) { dlclose(handle); };
    const std::unique_ptr<void, decltype(close)> handle(dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL),
                                                        close);
    ASSERT_TRUE(handle) << dlerror();
    const void* const address = dlsym(handle.get(), "USERD_get_name_of_reader");
    if (std::string(folder) == "1/2/3/4") {
      EXPECT_THROW(host::find_plugin_near(address), host::Error);
    } else {
      EXPECT_EQ(host::find_plugin_near(address), directory / host::kPluginFile);
    }
  }
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
