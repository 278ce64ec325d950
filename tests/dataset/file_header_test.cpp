// Opening a file up to the end of its header.
#include "dataset/file_header.h"

#include <cmath>

#include "testkit/byte_sink.h"
#include "tests/dataset/dataset_test.h"

namespace fld {
namespace {

class FileHeader : public testing::Test {
 protected:
  test::Reading read(const std::string& path) {
    test::Messages messages;
    const int status = read_file_header(InputFile(path, Access::walk), path, header_);
    return {status, messages.text()};
  }
  test::Reading read(const testkit::File& file) { return read(test::write(directory_, "a.fld", file)); }

  testkit::TemporaryDirectory directory_;
  FLDHeader header_;
};

TEST_F(FileHeader, HoldsTheItemsOfTheFile) {
  testkit::File file = test::plain_file();
  file.header.set_dimension(3);
  file.header.set_bias(1);
  file.header.set_cycle(120, 0.625);
  file.header.set_unused(2.0e30F, 4.0e200);
  const auto [status, messages] = read(file);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(messages, "");
  EXPECT_STREQ(header_.m_magic, "VTRL-FLD");
  EXPECT_EQ(header_.m_version, 4);
  EXPECT_EQ(header_.m_dimension, 3);
  EXPECT_EQ(header_.m_bias, 1);
  EXPECT_EQ(header_.m_cycle, 120);
  EXPECT_EQ(header_.m_time, 0.625);
  EXPECT_EQ(header_.m_unusedFloat, 2.0e30F);
  EXPECT_EQ(header_.m_unusedDouble, 4.0e200);
}

TEST_F(FileHeader, TimeInSinglePrecisionIsTheSameNumber) {
  testkit::File file = test::plain_file();
  file.header.set_cycle(1, 0.1, testkit::Precision::kSingle);
  EXPECT_EQ(read(file).status, 0);
  EXPECT_EQ(header_.m_time, static_cast<double>(0.1F));
}

TEST_F(FileHeader, WithoutItemsIsThreeDimensionalZeroBasedCycle0WithNothingUndefined) {
  testkit::File file = test::plain_file();
  file.header.items.clear();
  EXPECT_EQ(read(file).status, 0);
  EXPECT_EQ(header_.m_version, 4);
  EXPECT_EQ(header_.m_dimension, 3);
  EXPECT_EQ(header_.m_bias, 0);
  EXPECT_EQ(header_.m_cycle, 0);
  EXPECT_EQ(header_.m_time, 0.0);
  EXPECT_TRUE(std::isinf(header_.m_unusedFloat) && header_.m_unusedFloat > 0.0F);
  EXPECT_TRUE(std::isinf(header_.m_unusedDouble) && header_.m_unusedDouble > 0.0);
}

TEST_F(FileHeader, MissingFileCannotBeOpened) {
  const std::string path = (directory_ / "missing.fld").string();
  const auto [status, messages] = read(path);
  EXPECT_EQ(status, -1);
  EXPECT_EQ(messages, "FAILED TO OPEN " + path + "\n");
}

TEST_F(FileHeader, MessageHasAPathOfAnyLengthAndKind) {
  const std::string path = "/" + std::string(6000, 'x') + "%s%n.fld";
  const auto [status, messages] = read(path);
  EXPECT_EQ(status, -1);
  EXPECT_EQ(messages, "FAILED TO OPEN " + path + "\n");
}

TEST_F(FileHeader, MagicInSmallLettersIsNotAnFldFile) {
  testkit::File file = test::plain_file();
  file.magic = "vtrl-fld";
  const auto [status, messages] = read(file);
  EXPECT_EQ(status, -2);
  EXPECT_EQ(messages, "This is not FLD file.\n");
}

TEST_F(FileHeader, FileOfAnotherKindIsNotReadFurther) {
  const std::string path = (directory_ / "a.fld").string();
  testkit::write_bytes(path, "P5 640 480 255 and so on");
  const auto [status, messages] = read(path);
  EXPECT_EQ(status, -2);
  EXPECT_EQ(messages, "This is not FLD file.\n");
}

TEST_F(FileHeader, VersionIsCheckedBehindTheHeader) {
  testkit::File file = test::plain_file();
  file.version = 3;
  file.header.set_cycle(7, 1.5);
  const auto [status, messages] = read(file);
  EXPECT_EQ(status, -3);
  EXPECT_EQ(messages, "FLD FILE VERSION HAS TO BE 4.\n");
  EXPECT_EQ(header_.m_cycle, 7);
  file.header.item("Cycle").end_rule = testkit::Rule{0, 5, 0};
  EXPECT_EQ(test::read_error([&] { return read(file); }), "ERROR IN FLDV4_I_END");
}

TEST_F(FileHeader, WrongVersionIsToldBeforeAWrongDimension) {
  testkit::File file = test::plain_file();
  file.version = 5;
  file.header.set_dimension(2);
  const auto [status, messages] = read(file);
  EXPECT_EQ(status, -3);
  EXPECT_EQ(messages, "FLD FILE VERSION HAS TO BE 4.\n");
}

TEST_F(FileHeader, TwoDimensionsAreRefused) {
  testkit::File file = test::plain_file();
  file.header.set_dimension(2);
  const auto [status, messages] = read(file);
  EXPECT_EQ(status, -3);
  EXPECT_EQ(messages, "L2D3D MUST BE 3 IN FLD\n");
}

TEST_F(FileHeader, TraceNamesTheFile) {
  test::Messages messages;
  trace_reading("/d/case 1%d.fld");
  EXPECT_EQ(messages.text(), "IN ( FLD): /d/case 1%d.fld\n");
}

}  // namespace
}  // namespace fld
