// Quantities that cannot be read because the file was changed after opening.
#include <filesystem>
#include <string>
#include <sys/stat.h>

#include "testkit/byte_sink.h"
#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

constexpr int kScalarA = 1;
constexpr int kScalarB = 2;
constexpr int kVectorU = 3;
constexpr int kVectorW = 4;
constexpr char kSeekError[] = "error : failed to seek fld file.\n";

class QuantityFailures : public LoadedReader {
 protected:
  void SetUp() override {
    file_ = testkit::file_of(numbered_mesh(4));
    auto& set = file_.region_sets[0];
    set.add(numbered_scalar("A", 4, 10.0));
    set.add(numbered_vector("U", 4, 20.0));
    set.add(numbered_scalar("B", 4, 30.0));
    set.add(numbered_vector("W", 4, 40.0));
    places_ = testkit::write_file(file_, path_);
    open(path_);
  }

  // The answer to a request for values at all four nodes, and the messages.
  Answer ask(int variable, std::string* text = nullptr) {
    Answer answer;
    const std::string written = stderr_of([&] {
      answer = host.ask({.variable = variable, .part = 1, .var_type = variable >= kVectorU ? 2 : 1}, 4);
    });
    if (text != nullptr) *text = written;
    return answer;
  }
  void expect_failure(int variable, const std::string& expected) {
    std::string text;
    EXPECT_EQ(kNothing, ask(variable, &text));
    EXPECT_EQ(expected, text);
  }
  // The cached quantity is still valid.
  void expect_a_and_u_held() {
    std::string text = "untouched";
    EXPECT_EQ((Answer{1, {10, 11, 12, 13}}), ask(kScalarA, &text));
    EXPECT_EQ("", text);
    EXPECT_EQ((Answer{1, {20, 21, 22, 23}}), ask(kVectorU, &text));
    EXPECT_EQ("", text);
  }
  void cut_file(std::uint64_t size) const { std::filesystem::resize_file(path_, size); }

  const Answer kNothing = {-1, Floats(4, kUntouchedFloat)};
  const std::filesystem::path path_ = in("case.fld");
  testkit::File file_;
  testkit::Places places_;
};

TEST_F(QuantityFailures, FileThatIsGoneCannotBeOpened) {
  std::filesystem::remove(path_);
  expect_failure(kScalarA, "error : failed to open fld file : " + path_.string() + ".\n");
  expect_failure(kVectorU, "error : failed to open fld file : " + path_.string() + ".\n");
}

TEST_F(QuantityFailures, FolderOrPipeInItsPlaceCannotBeOpenedAndDoesNotBlock) {
  std::filesystem::remove(path_);
  std::filesystem::create_directory(path_);
  expect_failure(kScalarA, "error : failed to open fld file : " + path_.string() + ".\n");
  std::filesystem::remove(path_);
  ASSERT_EQ(0, mkfifo(path_.c_str(), 0600));
  expect_failure(kScalarA, "error : failed to open fld file : " + path_.string() + ".\n");
}

TEST_F(QuantityFailures, OtherTitleAtItsPlaceIsNotTheQuantity) {
  testkit::Title& title = file_.region_sets[0].section("LS_Scalar:A").title;
  for (const char* other : {"LS_Scalar:C", "LS_Vector:A", "LS_Scalar: A", "LS_Nodes", ""}) {
    title.text = other;
    testkit::write_file(file_, path_);
    expect_failure(kScalarA, kSeekError);
    title.text = "LS_Scalar:A";
  }
}

TEST_F(QuantityFailures, FileThatEndsBeforeItsTitleIsAnotherFile) {
  const auto offset = places_.of("LS_Vector:U").offset;
  for (const auto size : {offset + 39, offset + 10, offset, offset - 1, offset / 2, std::uint64_t{0}}) {
    cut_file(size);
    expect_failure(kVectorU, kSeekError);
  }
}

TEST_F(QuantityFailures, EveryEndInsideTheSectionThrowsAndKeepsWhatIsHeld) {
  const std::string bytes = testkit::read_bytes(path_);
  ask(kScalarA);
  ask(kVectorU);
  const auto expect_throw_at_every_end = [&](const char* title, int variable) {
    const auto& place = places_.of(title);
    const auto behind_title = place.offset + 40;
    for (auto size = behind_title; size < place.end; size += 7) {
      testkit::write_bytes(path_, std::string_view(bytes).substr(0, size));
      EXPECT_ANY_THROW(ask(variable)) << size - place.offset << " bytes of " << title;
      expect_a_and_u_held();
    }
  };
  expect_throw_at_every_end("LS_Scalar:B", kScalarB);
  expect_throw_at_every_end("LS_Vector:W", kVectorW);
}

TEST_F(QuantityFailures, EveryOtherFailureKeepsWhatIsHeldToo) {
  ask(kScalarA);
  ask(kVectorU);
  file_.region_sets[0].section("LS_Scalar:B").title.text = "LS_Scalar:C";
  file_.region_sets[0].section("LS_Vector:W").title.text = "LS_Vector:X";
  testkit::write_file(file_, path_);
  expect_failure(kScalarB, kSeekError);
  expect_failure(kVectorW, kSeekError);
  expect_a_and_u_held();
  std::filesystem::remove(path_);
  expect_failure(kScalarB, "error : failed to open fld file : " + path_.string() + ".\n");
  expect_a_and_u_held();
}

TEST_F(QuantityFailures, SectionWithOneBlockTooManyThrows) {
  file_.region_sets[0].section("LS_Scalar:B").blocks.push_back(testkit::Block::integer(1));
  testkit::write_file(file_, path_);
  EXPECT_ANY_THROW(ask(kScalarB));
  EXPECT_EQ((Answer{1, {10, 11, 12, 13}}), ask(kScalarA));
}

TEST_F(QuantityFailures, NegativeAndHugeCountsThrow) {
  for (const int count : {-1, 2000000000}) {
    file_.region_sets[0].section("LS_Scalar:B").blocks[1] = testkit::Block::integer(count);
    testkit::write_file(file_, path_);
    EXPECT_ANY_THROW(ask(kScalarB)) << count;
  }
}

TEST_F(QuantityFailures, ValuesOfAnotherWidthThanFloatsThrow) {
  for (const int width : {0, 2, 16}) {
    file_.region_sets[0].section("LS_Scalar:A").blocks[2].rule = testkit::Rule{width, 4, 1};
    testkit::write_file(file_, path_);
    EXPECT_ANY_THROW(ask(kScalarA)) << width;
  }
}

TEST_F(QuantityFailures, QuantityIsReadWhenItsFileIsBack) {
  std::filesystem::remove(path_);
  ask(kScalarA);
  testkit::write_file(file_, path_);
  EXPECT_EQ((Answer{1, {10, 11, 12, 13}}), ask(kScalarA));
}

TEST_F(QuantityFailures, NothingIsLeaked) {
  ask(kScalarA);
  cut_file(places_.of("LS_Scalar:B").end - 20);
  EXPECT_ANY_THROW(ask(kScalarB));
  EXPECT_EQ("", stderr_of([&] { api().exit_routine(); }));
}

}  // namespace
}  // namespace reader_test
