// The exchange of the host's value for undefined results.
#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

class ExtraData : public LoadedReader {
 protected:
  // A dataset with one scalar of four values, the last of which is undefined.
  void open_with_an_undefined_value() {
    testkit::File file = testkit::file_of(testkit::one_tetrahedron());
    file.header.set_unused(1.0e30F, 1.0e30);
    file.region_sets[0].add(testkit::scalar_section({.name = "T", .values = {1.0, 2.0, 3.0, 1.0e30}}));
    write_and_open(file);
  }
  float undefined_value() { return host.scalar(1, kWholeMesh)[3]; }

  static constexpr int kWholeMesh = 3;
};

TEST_F(ExtraData, AskedWithoutRoomTheReaderWantsOneFloat) {
  int request = 0;
  int count = kUntouchedInt;
  EXPECT_EQ(1, api().get_extra_data(&request, nullptr, &count, nullptr, nullptr, nullptr));
  EXPECT_EQ(0x40000000, request);
  EXPECT_EQ(1, count);
}

TEST_F(ExtraData, AskedWithRoomOnlyTheRequestIsWritten) {
  int request = 0;
  int count = kUntouchedInt;
  float value = -1.0e20F;
  EXPECT_EQ(1, api().get_extra_data(&request, nullptr, &count, nullptr, nullptr, &value));
  EXPECT_EQ(0x40000000, request);
  EXPECT_EQ(kUntouchedInt, count);
  EXPECT_EQ(-1.0e20F, value);
  open_with_an_undefined_value();
  EXPECT_EQ(0.0F, undefined_value()) << "a question delivers nothing";
}

TEST_F(ExtraData, DeliveredValueStandsForUndefinedResults) {
  int request = 0x40000000;
  int count = kUntouchedInt;
  float value = -1.0e20F;
  EXPECT_EQ(1, api().get_extra_data(&request, nullptr, &count, nullptr, nullptr, &value));
  EXPECT_EQ(0, request);
  EXPECT_EQ(kUntouchedInt, count);
  EXPECT_EQ(-1.0e20F, value);
  open_with_an_undefined_value();
  EXPECT_EQ(-1.0e20F, undefined_value());
}

TEST_F(ExtraData, AnyRequestOtherThan0Delivers) {
  int request = -1;
  float value = 12.5F;
  EXPECT_EQ(1, api().get_extra_data(&request, nullptr, nullptr, nullptr, nullptr, &value));
  EXPECT_EQ(0, request);
  open_with_an_undefined_value();
  EXPECT_EQ(12.5F, undefined_value());
}

TEST_F(ExtraData, DeliveryWithoutAValueKeepsTheOneBefore) {
  int request = 1;
  float value = 7.0F;
  api().get_extra_data(&request, nullptr, nullptr, nullptr, nullptr, &value);
  request = 1;
  EXPECT_EQ(1, api().get_extra_data(&request, nullptr, nullptr, nullptr, nullptr, nullptr));
  EXPECT_EQ(0, request);
  open_with_an_undefined_value();
  EXPECT_EQ(7.0F, undefined_value());
}

TEST_F(ExtraData, SecondFourthAndFifthArgumentAreNeverTouched) {
  for (int request : {0, 1}) {
    int second = kUntouchedInt;
    int count = kUntouchedInt;
    int fourth = kUntouchedInt;
    int fifth = kUntouchedInt;
    api().get_extra_data(&request, &second, &count, &fourth, &fifth, nullptr);
    EXPECT_EQ(kUntouchedInt, second);
    EXPECT_EQ(kUntouchedInt, fourth);
    EXPECT_EQ(kUntouchedInt, fifth);
  }
}

TEST_F(ExtraData, BeforeAnyDeliveryTheUndefinedValueIs0) {
  open_with_an_undefined_value();
  EXPECT_EQ(0.0F, undefined_value());
}

}  // namespace
}  // namespace reader_test
