// The header of a file.
#include "format/header.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>

#include "testkit/header.h"
#include "tests/format/input.h"
#include "tests/support/empty_list.h"
#include "tests/support/thrown_message.h"

namespace {

using testkit::Block;
using testkit::header_item;
using testkit::Precision;
using testkit::Rule;
using testkit::Section;

using Header = EmptyList;

// The outputs, with initial values.
struct Outputs {
  int dimension = -2;
  int cycle = -3;
  double time = -4.0;
  float unused_float = -5.0F;
  double unused_double = -6.0;
  int bias = -7;

  friend bool operator==(const Outputs&, const Outputs&) = default;
};

std::ostream& operator<<(std::ostream& stream, const Outputs& out) {
  return stream << "dimension " << out.dimension << ", cycle " << out.cycle << ", time " << out.time
                << ", unused " << out.unused_float << " " << out.unused_double << ", bias " << out.bias;
}

int read(FILE* stream, Outputs& out) {
  return fld::FLDV4_I_HeadB(stream, &out.dimension, &out.cycle, &out.time, &out.unused_float,
                            &out.unused_double, &out.bias);
}

const std::string kEnd = bytes_of(testkit::Title("HeaderDataEnd"));

Outputs outputs_of(const std::string& items) {
  const Input input(items + kEnd + kNext);
  Outputs out;
  EXPECT_EQ(read(input.stream(), out), 0);
  EXPECT_EQ(input.rest(), kNext);
  return out;
}

Outputs outputs_of(std::initializer_list<Section> items) {
  return outputs_of(bytes_of(items));
}

std::string error_of(const std::string& bytes) {
  const Input input(bytes);
  Outputs out;
  return thrown_message([&] { read(input.stream(), out); });
}

std::string error_of(std::initializer_list<Section> items) {
  return error_of(bytes_of(items) + kEnd);
}

Section dimension(int value) {
  return header_item("Dimension", {Block::integer(value)});
}

Section cycle(int number, double time, Precision precision) {
  return header_item("Cycle", {Block::integer(number), Block::real(time, precision)});
}

Section unused(float single, double twice) {
  return header_item("Unused", {Block::real(static_cast<double>(single), Precision::kSingle),
                                Block::real(twice, Precision::kDouble)});
}

testkit::Header usual() {
  testkit::Header header = testkit::Header::usual();
  header.set_dimension(3);
  header.set_bias(1);
  header.set_cycle(100, 0.25);
  header.set_unused(1.0e30F, 2.0e300);
  return header;
}

std::string bytes_of_items(const testkit::Header& header) {
  std::string bytes;
  for (const Section& item : header.items) bytes += bytes_of({item});
  return bytes;
}

constexpr Outputs kUsual = {3, 100, 0.25, 1.0e30F, 2.0e300, 1};

TEST_F(Header, ThatEndsAtOnceYieldsNothing) {
  EXPECT_EQ(outputs_of({}), Outputs());
}

TEST_F(Header, GivesAllItsValues) {
  EXPECT_EQ(outputs_of(bytes_of_items(usual())), kUsual);
}

TEST_F(Header, ItemsComeInAnyOrder) {
  testkit::Header header = usual();
  std::reverse(header.items.begin(), header.items.end());
  EXPECT_EQ(outputs_of(bytes_of_items(header)), kUsual);
}

TEST_F(Header, AMissingItemLeavesItsOutputsAlone) {
  const Outputs before;
  for (const Section& item : usual().items) {
    const std::string& title = item.title.text;
    testkit::Header header = usual();
    header.remove(title);
    Outputs expected = kUsual;
    if (title == "Dimension") expected.dimension = before.dimension;
    if (title == "Bias") expected.bias = before.bias;
    if (title == "Cycle") {
      expected.cycle = before.cycle;
      expected.time = before.time;
    }
    if (title == "Unused") {
      expected.unused_float = before.unused_float;
      expected.unused_double = before.unused_double;
    }
    EXPECT_EQ(outputs_of(bytes_of_items(header)), expected) << title;
  }
}

TEST_F(Header, EachItemAloneGivesItsValue) {
  EXPECT_EQ(outputs_of({dimension(2)}).dimension, 2);
  EXPECT_EQ(outputs_of({header_item("Bias", {Block::integer(1)})}).bias, 1);
  EXPECT_EQ(outputs_of({cycle(-12, 1.5, Precision::kDouble)}).cycle, -12);
  EXPECT_EQ(outputs_of({cycle(-12, 1.5, Precision::kDouble)}).time, 1.5);
  EXPECT_EQ(outputs_of({unused(7.0F, 8.0)}).unused_float, 7.0F);
  EXPECT_EQ(outputs_of({unused(7.0F, 8.0)}).unused_double, 8.0);
}

TEST_F(Header, ARepeatedItemCountsTheLastTime) {
  EXPECT_EQ(outputs_of({dimension(2), dimension(3)}).dimension, 3);
}

TEST_F(Header, ATimeInSinglePrecisionIsTheSameValueInDouble) {
  EXPECT_EQ(outputs_of({cycle(1, 0.1, Precision::kSingle)}).time, 0.100000001490116119384765625);
  EXPECT_EQ(outputs_of({cycle(1, 0.1, Precision::kDouble)}).time, 0.1);
}

TEST_F(Header, ATimeOfAnotherWidthIsAnInvalidType) {
  EXPECT_EQ(error_of({header_item("Cycle", {Block::integer(1), Block::real(0.5).with_rule({2, 1, 1})})}),
            "THIS FLD FILE HAS AN INVALID DATA TYPE.");
}

TEST_F(Header, KnownItemsThatAreSteppedOverMayHaveAnyBlocks) {
  for (const char* title : {"Application", "GridType", "Date", "Comments"}) {
    EXPECT_EQ(outputs_of({header_item(title, {}), dimension(2)}).dimension, 2) << title;
    EXPECT_EQ(outputs_of({header_item(title, {Block::characters("some text")}), dimension(2)}).dimension, 2);
    EXPECT_EQ(outputs_of({header_item(title, {Block::integer(1), Block::reals({1.0, 2.0}).cut(1),
                                              Block::rule_alone({4, 1, 0}), Block::characters("text", 80)}),
                          dimension(2)})
                  .dimension,
              2);
  }
}

TEST_F(Header, UnknownItemsAreSteppedOver) {
  EXPECT_EQ(outputs_of({header_item("SomethingElse", {Block::integer(1), Block::integer(2)}), dimension(2)})
                .dimension,
            2);
  EXPECT_EQ(outputs_of({header_item("", {Block::integer(1)}), dimension(2)}).dimension, 2);
}

TEST_F(Header, VersionsAndDatesAreReadAndDropped) {
  Outputs expected;
  expected.dimension = 2;
  EXPECT_EQ(outputs_of({header_item("ApplicationVersion", {Block::integer(11)}),
                        header_item("ReleaseDate", {Block::integer(20161128)}), dimension(2)}),
            expected);
}

TEST_F(Header, TheApplicationsVersionIsNotTakenForTheApplication) {
  // An application may have any blocks, its version has exactly one.
  EXPECT_EQ(error_of({header_item("ApplicationVersion", {Block::integer(1), Block::integer(2)})}),
            "ERROR IN FLDV4_I_END");
  EXPECT_EQ(error_of({header_item("ReleaseDate", {Block::integer(1), Block::integer(2)})}),
            "ERROR IN FLDV4_I_END");
}

TEST_F(Header, ATitleThatGoesOnWithALetterIsAnotherItem) {
  EXPECT_EQ(outputs_of({header_item("Dimensions", {Block::integer(2)})}), Outputs());
  EXPECT_EQ(outputs_of({header_item("BiasOfIndices", {Block::integer(2)})}), Outputs());
}

TEST_F(Header, ATitleThatGoesOnAfterABlankIsTheSameItem) {
  EXPECT_EQ(outputs_of({header_item("Dimension of the mesh", {Block::integer(2)})}).dimension, 2);
}

TEST_F(Header, ATitlesTrailingMarkerSaysHowMuchOfItCounts) {
  testkit::Title title("DimensionOfTheMesh");
  title.markers.trailing = 9;
  EXPECT_EQ(outputs_of({header_item(title, {Block::integer(2)})}).dimension, 2);
  title.markers.trailing = 10;
  EXPECT_EQ(outputs_of({header_item(title, {Block::integer(2)})}), Outputs());
  title.markers.trailing = -1;
  EXPECT_EQ(outputs_of({header_item(title, {Block::integer(2)})}), Outputs());
}

TEST_F(Header, AnItemWithoutItsRecordLeavesItsOutputAlone) {
  Section empty = dimension(3);
  empty.blocks[0] = Block::rule_alone({4, 1, 0});
  EXPECT_EQ(outputs_of({empty}), Outputs());
}

TEST_F(Header, TheRulesOfUndefinedValuesAreNotChecked) {
  Section item = unused(7.0F, 8.0);
  item.blocks[0].rule = Rule{99, -1, 0};
  item.blocks[1].rule = Rule{0, 0, 0};
  EXPECT_EQ(outputs_of({item}).unused_float, 7.0F);
  EXPECT_EQ(outputs_of({item}).unused_double, 8.0);
}

TEST_F(Header, AnItemThatIsNotClosedFails) {
  const auto with_end = [](Section item, Rule end) {
    item.end_rule = end;
    return item;
  };
  const Rule wrong = {0, 5, 0};
  EXPECT_EQ(error_of({with_end(dimension(3), wrong)}), "ERROR IN FLDV4_I_END");
  EXPECT_EQ(error_of({with_end(header_item("Bias", {Block::integer(1)}), wrong)}), "ERROR IN FLDV4_I_END");
  EXPECT_EQ(error_of({with_end(cycle(1, 0.5, Precision::kDouble), wrong)}), "ERROR IN FLDV4_I_END");
  EXPECT_EQ(error_of({with_end(unused(1.0F, 1.0), wrong)}), "ERROR IN FLDV4_I_END");
  EXPECT_EQ(error_of({with_end(header_item("ApplicationVersion", {Block::integer(1)}), wrong)}),
            "ERROR IN FLDV4_I_END");
  EXPECT_EQ(error_of({with_end(header_item("ReleaseDate", {Block::integer(1)}), wrong)}),
            "ERROR IN FLDV4_I_END");
}

TEST_F(Header, WithoutAnEndIsAnUnexpectedEnd) {
  EXPECT_EQ(error_of(bytes_of({dimension(3)})), "UNEXPECTED END OF FILE AT BYTE 92.");
}

TEST_F(Header, CutOffAnywhereIsAnUnexpectedEnd) {
  const std::string bytes = bytes_of_items(usual()) + kEnd;
  for (size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_EQ(error_of(bytes.substr(0, length)).substr(0, 22), "UNEXPECTED END OF FILE") << length;
  }
}

}  // namespace
