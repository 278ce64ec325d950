// The motion section of a region set.
#include "format/ale.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "testkit/motion.h"
#include "tests/format/input.h"
#include "tests/support/empty_list.h"
#include "tests/support/thrown_message.h"

namespace {

using testkit::Action;
using testkit::Block;
using testkit::Precision;
using testkit::Section;

using MotionSection = EmptyList;
using MotionSectionDeathTest = EmptyList;
using Data = std::array<double, 24>;

void read(const std::string& bytes, fld::ALE& ale) {
  const Input input(bytes + kNext);
  fld::FLDV4_ALE(input.stream(), ale);
  EXPECT_EQ(input.rest(), kNext);
}

fld::ALE read(const testkit::Motion& motion) {
  fld::ALE ale;
  read(body_of(testkit::motion_section(motion)), ale);
  return ale;
}

// The only action of the only region.
fld::ALE_ACT read_back(const Action& action, Precision precision = Precision::kDouble, size_t length = 16) {
  const fld::ALE ale = read({.regions = {{.names = {"rotor"}, .actions = {action}}},
                             .precision = precision,
                             .name_length = length});
  return ale.regions.at(0).actions.at(0);
}

std::string error_of(const Section& section, fld::ALE& ale) {
  const Input input(body_of(section));
  return thrown_message([&] { fld::FLDV4_ALE(input.stream(), ale); });
}

std::string error_of(const Section& section) {
  fld::ALE ale;
  return error_of(section, ale);
}

Section translation() {
  return testkit::motion_section(
      {.base_cycle = 5, .regions = {{.names = {"rotor"}, .actions = {Action::translate({1.0, 2.0, 3.0})}}}});
}

TEST_F(MotionSection, WithoutRegionsIsThreeIntegersAndTheEndRule) {
  fld::ALE ale;
  read(bytes_of(Block::integer(8)) + bytes_of(Block::integer(100)) + bytes_of(Block::integer(0)) +
           bytes_of(testkit::Rule{}),
       ale);
  EXPECT_EQ(ale.base_cycle, 100);
  EXPECT_TRUE(ale.regions.empty());
}

TEST_F(MotionSection, GivesRegionsInFileOrder) {
  const fld::ALE ale =
      read({.base_cycle = -1,
            .regions = {{.names = {"rotor", "hub"}, .actions = {Action::translate({1, 2, 3})}},
                        {.names = {}, .actions = {}},
                        {.names = {"piston"}, .actions = {}}}});
  EXPECT_EQ(ale.base_cycle, -1);
  ASSERT_EQ(ale.regions.size(), 3U);
  EXPECT_EQ(ale.regions[0].nname, 2);
  EXPECT_EQ(ale.regions[0].names, (std::vector<std::string>{"rotor", "hub"}));
  EXPECT_EQ(ale.regions[0].actions.size(), 1U);
  EXPECT_EQ(ale.regions[1].nname, 0);
  EXPECT_TRUE(ale.regions[1].names.empty());
  EXPECT_EQ(ale.regions[2].names, (std::vector<std::string>{"piston"}));
  EXPECT_TRUE(ale.regions[2].actions.empty());
}

TEST_F(MotionSection, NamesLoseTheirBlanksAndKindsKeepThem) {
  const fld::ALE ale =
      read({.regions = {{.names = {"a b"}, .actions = {Action::translate({1, 2, 3})}}}, .name_length = 12});
  EXPECT_EQ(ale.regions[0].names[0], "a b");
  EXPECT_STREQ(ale.regions[0].actions[0].kind, "Translate   ");
}

TEST_F(MotionSection, NamesMayBeOfAnyLength) {
  const std::string name(5000, 'x');
  const fld::ALE ale = read({.regions = {{.names = {name, ""}, .actions = {}}}});
  EXPECT_EQ(ale.regions[0].names, (std::vector<std::string>{name, ""}));
}

TEST_F(MotionSection, ARotationHasCentreAxisAndAngle) {
  const fld::ALE_ACT act = read_back(Action::rotate({1, 2, 3}, {4, 5, 6}, 0.75));
  EXPECT_EQ(act.motion(), fld::Motion::rotate);
  EXPECT_EQ(act.data, (Data{1, 2, 3, 4, 5, 6, 0.75}));
}

TEST_F(MotionSection, ANameThatGoesOnAfterItsKeywordIsThatMotion) {
  Action action = Action::rotate({1, 2, 3}, {4, 5, 6}, 0.75);
  action.kind = "RotateSlowly";
  const fld::ALE_ACT act = read_back(action);
  EXPECT_EQ(act.motion(), fld::Motion::rotate);
  EXPECT_STREQ(act.kind, "RotateSlowly    ");
  EXPECT_EQ(act.data, (Data{1, 2, 3, 4, 5, 6, 0.75}));
}

TEST_F(MotionSection, ATranslationHasADisplacement) {
  EXPECT_EQ(read_back(Action::translate({1, 2, 3})).data, (Data{1, 2, 3}));
}

TEST_F(MotionSection, AScalingHasCentreAndFactors) {
  EXPECT_EQ(read_back(Action::scale({1, 2, 3}, {4, 5, 6})).data, (Data{1, 2, 3, 4, 5, 6}));
}

TEST_F(MotionSection, FourPointsHaveFourSourcesThenFourTargets) {
  const Action action = Action::four_points({{{0, 1, 2}, {3, 4, 5}, {6, 7, 8}, {9, 10, 11}}},
                                            {{{12, 13, 14}, {15, 16, 17}, {18, 19, 20}, {21, 22, 23}}});
  Data expected = {};
  for (size_t i = 0; i < 24; ++i) expected[i] = static_cast<double>(i);
  EXPECT_EQ(read_back(action).data, expected);
}

TEST_F(MotionSection, SinglePrecisionIsWidened) {
  const double tenth = 0.100000001490116119384765625;
  EXPECT_EQ(read_back(Action::translate({0.1, 0.1, 0.5}), Precision::kSingle).data,
            (Data{tenth, tenth, 0.5}));
  EXPECT_EQ(read_back(Action::rotate({0, 0, 0}, {0, 0, 1}, 0.1), Precision::kSingle).data[6], tenth);
  EXPECT_EQ(read_back(Action::translate({0.1, 0.2, 0.3})).data, (Data{0.1, 0.2, 0.3}));
}

TEST_F(MotionSection, ActionsKeepTheirOrder) {
  const fld::ALE ale =
      read({.regions = {{.names = {"rotor"},
                         .actions = {Action::translate({1, 0, 0}), Action::scale({0, 0, 0}, {2, 2, 2}),
                                     Action::translate({2, 0, 0})}}}});
  const auto& actions = ale.regions[0].actions;
  ASSERT_EQ(actions.size(), 3U);
  EXPECT_EQ(actions[0].data[0], 1.0);
  EXPECT_EQ(actions[1].data[3], 2.0);
  EXPECT_EQ(actions[2].data[0], 2.0);
}

TEST_F(MotionSection, AnActionOfAnotherKindHasNoData) {
  const fld::ALE ale =
      read({.regions = {{.names = {"rotor"},
                         .actions = {{.kind = "Shear", .item_count = 7}, Action::translate({1, 2, 3})}}}});
  ASSERT_EQ(ale.regions[0].actions.size(), 2U);
  EXPECT_STREQ(ale.regions[0].actions[0].kind, "Shear    ");
  EXPECT_EQ(ale.regions[0].actions[0].data, Data());
  EXPECT_EQ(ale.regions[0].actions[1].data, (Data{1, 2, 3}));
}

TEST_F(MotionSection, AKindKeepsItsFirstEightyCharacters) {
  Action action = Action::translate({1, 2, 3});
  action.kind = "Translate" + std::string(200, '.');
  const fld::ALE_ACT act = read_back(action, Precision::kDouble, 200);
  EXPECT_EQ(std::string(act.kind), "Translate" + std::string(71, '.'));
  EXPECT_EQ(act.data, (Data{1, 2, 3}));
}

TEST_F(MotionSection, ReadAgainReplacesWhatWasRead) {
  fld::ALE ale =
      read({.base_cycle = 1,
            .regions = {{.names = {"a", "b"}, .actions = {Action::rotate({1, 2, 3}, {4, 5, 6}, 7)}},
                        {.names = {"c"}, .actions = {}}}});
  read(body_of(translation()), ale);
  EXPECT_EQ(ale.base_cycle, 5);
  ASSERT_EQ(ale.regions.size(), 1U);
  EXPECT_EQ(ale.regions[0].nname, 1);
  EXPECT_EQ(ale.regions[0].names, (std::vector<std::string>{"rotor"}));
  ASSERT_EQ(ale.regions[0].actions.size(), 1U);
  EXPECT_EQ(ale.regions[0].actions[0].data, (Data{1, 2, 3}));
}

// Blocks of translation(): 0 name length, 1 base cycle, 2 regions, 3 names, 4 the name, 5 actions, 6 the
// kind, 7 data items, 8 the displacement.
TEST_F(MotionSection, WrongCountsAreErrors) {
  for (const size_t block : {0U, 2U, 3U, 5U}) {
    Section section = translation();
    section.blocks[block] = Block::integer(-1);
    EXPECT_EQ(error_of(section).substr(0, 17), "NEGATIVE COUNT -1") << block;
    section.blocks[block] = Block::integer(0x7fffffff);
    EXPECT_EQ(error_of(section).substr(0, 46), "COUNT 2147483647 EXCEEDS THE REST OF THE FILE ") << block;
  }
}

TEST_F(MotionSection, MoreOrFewerBlocksThanCountedAreErrors) {
  for (const size_t block : {2U, 3U, 5U}) {
    for (const int count : {0, 2}) {
      Section section = translation();
      section.blocks[block] = Block::integer(count);
      EXPECT_NE(error_of(section), "nothing was thrown") << block << " " << count;
    }
  }
}

TEST_F(MotionSection, DataOfAnotherWidthIsAnInvalidType) {
  Section section = translation();
  section.blocks[8].rule = testkit::Rule{2, 3, 1};
  EXPECT_EQ(error_of(section), "THIS FLD FILE HAS AN INVALID DATA TYPE.");
}

TEST_F(MotionSection, AfterAnErrorKeepsWhatWasRead) {
  Section section =
      testkit::motion_section({.base_cycle = 5,
                               .regions = {{.names = {"rotor"}, .actions = {Action::translate({1, 2, 3})}},
                                           {.names = {"hub"}, .actions = {Action::translate({4, 5, 6})}}}});
  section.blocks.back().rule = testkit::Rule{3, 3, 1};
  fld::ALE ale;
  EXPECT_EQ(error_of(section, ale), "THIS FLD FILE HAS AN INVALID DATA TYPE.");
  EXPECT_EQ(ale.base_cycle, 5);
  ASSERT_EQ(ale.regions.size(), 2U);
  EXPECT_EQ(ale.regions[0].actions.at(0).data, (Data{1, 2, 3}));
  EXPECT_EQ(ale.regions[1].names, (std::vector<std::string>{"hub"}));
}

TEST_F(MotionSection, WithAnotherBlockFails) {
  Section section = translation();
  section.blocks.push_back(Block::integer(1));
  EXPECT_EQ(error_of(section), "ERROR IN FLDV4_I_END");
}

void expect_wrong_item_count_dies(Action action, int item_count, const std::string& expression) {
  action.item_count = item_count;
  const std::string bytes =
      body_of(testkit::motion_section({.regions = {{.names = {"rotor"}, .actions = {action}}}}));
  const Input input(bytes);
  fld::ALE ale;
  EXPECT_DEATH(fld::FLDV4_ALE(input.stream(), ale),
               "Convert_read_fld:[0-9]+: void FLDV4_ALE\\(_IO_FILE \\*, ALE &\\): Assertion `" + expression +
                   "' failed");
}

TEST_F(MotionSectionDeathTest, ARotationOfAnotherNumberOfItemsEndsTheProcess) {
  expect_wrong_item_count_dies(Action::rotate({0, 0, 0}, {0, 0, 1}, 1.0), 2, "ndat == 3");
}

TEST_F(MotionSectionDeathTest, ATranslationOfAnotherNumberOfItemsEndsTheProcess) {
  expect_wrong_item_count_dies(Action::translate({1, 2, 3}), 3, "ndat == 1");
}

TEST_F(MotionSectionDeathTest, AScalingOfAnotherNumberOfItemsEndsTheProcess) {
  expect_wrong_item_count_dies(Action::scale({0, 0, 0}, {1, 1, 1}), 0, "ndat == 2");
}

TEST_F(MotionSectionDeathTest, FourPointsOfAnotherNumberOfItemsEndTheProcess) {
  expect_wrong_item_count_dies(Action::four_points({}, {}), -8, "ndat == 8");
}

}  // namespace
