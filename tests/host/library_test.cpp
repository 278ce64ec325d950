#include "host/library.h"

#include "gtest/gtest.h"
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <string>

#include "host/error.h"
#include "testkit/temporary_directory.h"

namespace {

// The message of the Error that loading `path` throws.
std::string loading_error(const std::filesystem::path& path,
                          host::Library::Globals globals = host::Library::Globals::shared) {
  try {
    const host::Library library(path, globals);
  } catch (const host::Error& error) {
    return error.what();
  }
  return "loads";
}

TEST(Library, FindsEveryEntryPointByItsPlainName) {
  const host::Library library(FAKE_READER);
  EXPECT_TRUE(library.entry_points().get_part_coords);
  EXPECT_TRUE(library.entry_points().get_metadata);
  EXPECT_STREQ(library.entry_points().get_metadata.name, "USERD_get_metadata");
  EXPECT_EQ(library.path(), FAKE_READER);
}

TEST(Library, LeavesOptionalEntryPointsNullThatTheLibraryLacks) {
  const host::Library library(FAKE_READER_MINIMAL);
  EXPECT_TRUE(library.entry_points().get_var_by_component);
  EXPECT_FALSE(library.entry_points().get_metadata);
  EXPECT_FALSE(library.entry_points().stop_part_building);
}

TEST(Library, NamesTheFileThatCannotBeLoaded) {
  const std::string message = loading_error("/no/such/reader.so");
  EXPECT_NE(message.find("cannot load the reader library"), std::string::npos) << message;
  EXPECT_NE(message.find("/no/such/reader.so"), std::string::npos) << message;
}

TEST(Library, NamesTheFileThatCannotBeCopiedOrLoadedAsACopy) {
  const auto own = host::Library::Globals::own;
  const std::string missing = loading_error("/no/such/reader.so", own);
  EXPECT_EQ(missing, "cannot load the reader library: /no/such/reader.so: No such file or directory");
  const std::string no_library = loading_error("/proc/self/cmdline", own);
  EXPECT_NE(no_library.find("cannot load the reader library: /proc/self/cmdline: "), std::string::npos)
      << no_library;
  EXPECT_NE(loading_error(FAKE_READER_WITHOUT_COORDS, own).find("it lacks USERD_get_part_coords"),
            std::string::npos);
}

TEST(Library, DoesNotSearchTheLoadersDirectoriesForABareName) {
  // The C library would be found that way.
  EXPECT_NE(loading_error("libc.so.6").find("cannot load the reader library"), std::string::npos);
}

TEST(Library, RejectsAFileThatIsNoLibrary) {
  const testkit::TemporaryDirectory directory;
  const std::filesystem::path path = directory / "not-a-library.so";
  std::ofstream(path) << "plain text";
  const std::string message = loading_error(path);
  EXPECT_TRUE(message.starts_with("cannot load the reader library: " + path.string() + ": ")) << message;
  // The loader's reason, not a missing file.
  EXPECT_GT(message.size(), ("cannot load the reader library: " + path.string() + ": ").size()) << message;
  EXPECT_EQ(message.find("No such file"), std::string::npos) << message;
  EXPECT_EQ(message.find(path.string()), message.rfind(path.string())) << message;
  // Of a copy the loader tells another path.
  const std::string of_copy = loading_error(path, host::Library::Globals::own);
  EXPECT_TRUE(of_copy.starts_with("cannot load the reader library: " + path.string() + ": ")) << of_copy;
}

TEST(Library, NamesTheEntryPointThatIsMissing) {
  const std::string message = loading_error(FAKE_READER_WITHOUT_COORDS);
  EXPECT_NE(message.find("is not a reader library: it lacks USERD_get_part_coords"), std::string::npos)
      << message;
  EXPECT_EQ(message.find("USERD_get_sol_times"), std::string::npos) << message;
}

TEST(Library, RejectsAnotherVersionOfTheInterface) {
  const std::string message = loading_error(FAKE_READER_OTHER_VERSION);
  EXPECT_NE(message.find("speaks version '2.05' of the reader interface, this host '2.04'"),
            std::string::npos)
      << message;
}

// Other tests leave the usual reader loaded.
TEST(Library, ClosesTheLibraryWithTheObject) {
  const auto is_loaded = [] {
    void* handle = dlopen(FAKE_READER_MINIMAL, RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr) dlclose(handle);
    return handle != nullptr;
  };
  {
    const host::Library library(FAKE_READER_MINIMAL);
    EXPECT_TRUE(is_loaded());
  }
  EXPECT_FALSE(is_loaded());
}

}  // namespace
