// The reader's identity.
#include <algorithm>
#include <array>

#include "tests/reader/loaded_reader.h"

namespace reader_test {
namespace {

using Identity = LoadedReader;

constexpr std::size_t kIdentityText = 20;
constexpr std::size_t kDescriptionText = 255;

// A host's buffer of `kSize` bytes followed by 8 guard bytes.
template <std::size_t kSize>
class Buffer {
 public:
  Buffer() { bytes_.fill(kUntouchedChar); }

  char* data() { return bytes_.data(); }
  // The content of the buffer after `text`, including NULs and guard bytes.
  void expect(std::string text) const {
    text.resize(kSize, '\0');
    text.append(8, kUntouchedChar);
    EXPECT_EQ(text, std::string(bytes_.data(), bytes_.size()));
  }

 private:
  std::array<char, kSize + 8> bytes_;
};

TEST_F(Identity, NameIsVantrelFldAndOneFileNameIsEnough) {
  Buffer<kIdentityText> name;
  int two_fields = kUntouchedInt;
  EXPECT_EQ(1, api().get_name_of_reader(name.data(), &two_fields));
  name.expect("Vantrel FLD");
  EXPECT_EQ(0, two_fields);
}

TEST_F(Identity, ReleaseIs102) {
  Buffer<kIdentityText> release;
  EXPECT_EQ(1, api().get_reader_release(release.data()));
  release.expect("1.02");
}

TEST_F(Identity, VersionIsThatOfTheInterface) {
  Buffer<kIdentityText> version;
  EXPECT_EQ(1, api().get_reader_version(version.data()));
  version.expect("2.04");
}

TEST_F(Identity, DescriptionNamesReleaseDateAndInterface) {
  Buffer<kDescriptionText> description;
  EXPECT_EQ(1, api().get_reader_descrip(description.data()));
  description.expect(
      "Vantrel FLD file (.fld)\n"
      "User-defined reader (release version 1.02, Nov 28, 2016).\n"
      "(Using API Version 2.04)");
}

TEST_F(Identity, FileButtonHasALabelAndTheSecondLabelIsLeftAlone) {
  std::array<char, 80> first;
  std::array<char, 80> second;
  first.fill(kUntouchedChar);
  second.fill(kUntouchedChar);
  char* const result = api().set_filename_button_labels(first.data(), second.data());
  EXPECT_EQ(first.data(), result) << "the result is the string copy's";
  EXPECT_STREQ("Set file", first.data());
  EXPECT_EQ(kUntouchedChar, first[9]) << "written beyond the terminator";
  EXPECT_TRUE(std::all_of(second.begin(), second.end(), [](char c) { return c == kUntouchedChar; }));
}

TEST_F(Identity, NothingIsWrittenToTheErrorStream) {
  std::array<char, kDescriptionText> text{};
  int two_fields = 0;
  EXPECT_EQ("", stderr_of([&] {
              api().get_name_of_reader(text.data(), &two_fields);
              api().get_reader_release(text.data());
              api().get_reader_version(text.data());
              api().get_reader_descrip(text.data());
              api().set_filename_button_labels(text.data(), nullptr);
              api().set_server_number(3, 4);
            }));
}

}  // namespace
}  // namespace reader_test
