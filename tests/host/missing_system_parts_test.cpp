// Systems without anonymous files in memory or without a converter of Shift_JIS. Functions of this program
// replace those of the C library.
#include "gtest/gtest.h"
#include <cerrno>
#include <dlfcn.h>
#include <iconv.h>
#include <string>
#include <string_view>
#include <sys/mman.h>

#include "host/diagnostics_capture.h"
#include "host/error.h"
#include "host/library.h"
#include "host/session.h"
#include "host/text_encoding.h"
#include "tests/host/fake_reader.h"
#include "tests/host/fake_session.h"

namespace {

bool has_memory_files = true;
bool has_converter = true;

// The function of the C library.
template <typename Function>
Function* next(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" int memfd_create(const char* name, unsigned flags) noexcept {
  if (has_memory_files) return next<int(const char*, unsigned)>("memfd_create")(name, flags);
  errno = ENOSYS;
  return -1;
}

extern "C" iconv_t iconv_open(const char* to, const char* from) {
  if (has_converter) return next<iconv_t(const char*, const char*)>("iconv_open")(to, from);
  errno = EINVAL;
  return reinterpret_cast<iconv_t>(-1);  // NOLINT(performance-no-int-to-ptr)
}

namespace {

class Without {
 public:
  explicit Without(bool& part) : part_(part) { part_ = false; }
  Without(const Without&) = delete;
  Without& operator=(const Without&) = delete;
  ~Without() { part_ = true; }

 private:
  bool& part_;
};

TEST(WithoutMemoryFiles, LibrariesAndDiagnosticsGoThroughTheTemporaryFolder) {
  const Without none(has_memory_files);
  const host::Library first(FAKE_READER, host::Library::Globals::own);
  const host::Library second(FAKE_READER, host::Library::Globals::own);
  EXPECT_NE(first.entry_points().set_filenames.function, second.entry_points().set_filenames.function);
  host::Session session(first, {.capture_diagnostics = true});
  session.open(fake::file(fake::kTwoSets));
  EXPECT_EQ(session.diagnostics(), "IN ( FLD): /made-up/two_sets.fld\nread done\n");
}

TEST(WithoutMemoryFiles, TheErrorOfAMissingLibraryNamesIt) {
  const Without none(has_memory_files);
  try {
    const host::Library library("/nowhere/reader.so", host::Library::Globals::own);
    FAIL() << "is loaded";
  } catch (const host::Error& error) {
    EXPECT_STREQ(error.what(),
                 "cannot load the reader library: /nowhere/reader.so: No such file or directory");
  }
}

TEST(WithoutAConverter, NamesAreShownWithEscapes) {
  const Without none(has_converter);
  EXPECT_EQ(host::to_utf8("wall_1"), "wall_1");
  EXPECT_EQ(host::to_utf8("a\x8a\x4f\\"), "a\\x8aO\\");
  EXPECT_EQ(host::to_utf8("外筒"), "外筒");
  EXPECT_EQ(host::printable("\x8a\x4f\n"), "\\x8aO ");
  EXPECT_EQ(host::message_to_utf8("/data/外.fld"), "/data/外.fld");
}

TEST(Utf8, IsWellFormedOrNot) {
  for (const char* text :
       {"", "a", "\u00a0", "\u07ff", "\u0800", "\ud7ff", "\ue000", "\U00010000", "\U0010ffff"})
    EXPECT_TRUE(host::is_utf8(text)) << text;
  for (const char* text : {"\x80", "\xc2", "\xc1\xbf", "\xe0\x9f\xbf", "\xed\xa0\x80", "\xe5\xa4",
                           "\xf0\x8f\xbf\xbf", "\xf4\x90\x80\x80", "\xf5\x80\x80\x80", "a\xff"})
    EXPECT_FALSE(host::is_utf8(text)) << text;
}

}  // namespace
