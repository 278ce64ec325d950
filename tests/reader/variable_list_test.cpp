// The variables and their descriptions.
#include <array>
#include <string>

#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

class VariableList : public LoadedReader {
 protected:
  // A file with these scalars and vectors, named and labelled.
  using Names = std::vector<std::pair<std::string, std::string>>;
  static testkit::File with_quantities(int cycle, const Names& scalars, const Names& vectors) {
    testkit::File file = file_at(cycle, {numbered_mesh(4)});
    add_quantities(file.region_sets[0], scalars, vectors);
    return file;
  }
  static void add_quantities(testkit::RegionSet& set, const Names& scalars, const Names& vectors) {
    const testkit::Reals values = {1.0, 2.0, 3.0, 4.0};
    for (const auto& [name, label] : vectors) {
      set.add(testkit::vector_section({.name = name, .label = label, .x = values, .y = values, .z = values}));
    }
    for (const auto& [name, label] : scalars) {
      set.add(testkit::scalar_section({.name = name, .label = label, .values = values}));
    }
  }
  void write_step(int cycle, const testkit::File& file) {
    write(file, "case_" + std::to_string(cycle) + ".fld");
  }
  std::vector<std::string> descriptions() {
    std::vector<std::string> texts;
    for (const auto& variable : host.variables()) texts.push_back(variable.description);
    return texts;
  }
};

TEST_F(VariableList, ScalarsComeFirstThenVectorsThenTheMaterial) {
  write_and_open(with_quantities(0, {{"PRES", "Pressure [Pa]"}, {"TEMP", "Temperature [C]"}},
                                 {{"VEL", "Velocity [m/s]"}}));
  EXPECT_EQ(4, api().get_number_of_variables());
  EXPECT_EQ((std::vector<VariableInfo>{{"Pressure [Pa] (PRES)", 1, 4},
                                       {"Temperature [C] (TEMP)", 1, 4},
                                       {"Velocity [m/s] (VEL)", 2, 4},
                                       {"MatOfElements", 1, 1}}),
            host.variables());
}

TEST_F(VariableList, WithoutQuantitiesThereIsTheMaterialAlone) {
  write_and_open(testkit::file_of(numbered_mesh(4)));
  EXPECT_EQ((std::vector<VariableInfo>{{"MatOfElements", 1, 1}}), host.variables());
}

TEST_F(VariableList, AllFilesTogetherInTheOrderOfTheirFirstAppearance) {
  write_step(1, with_quantities(1, {{"A", "a"}, {"B", "b"}}, {{"V", "v"}}));
  write_step(2, with_quantities(2, {{"B", "b"}, {"C", "c"}}, {{"W", "w"}, {"V", "v"}}));
  open(in("case_1.fld"));
  EXPECT_EQ((std::vector<std::string>{"a (A)", "b (B)", "c (C)", "v (V)", "w (W)", "MatOfElements"}),
            descriptions());
}

TEST_F(VariableList, LabelIsThatOfTheFirstFile) {
  write_step(1, with_quantities(1, {{"T", "first"}}, {}));
  write_step(2, with_quantities(2, {{"T", "second"}}, {}));
  open(in("case_2.fld"));
  EXPECT_EQ((std::vector<std::string>{"first (T)", "MatOfElements"}), descriptions());
}

TEST_F(VariableList, NameOfTwoRegionSetsIsListedOnceAndScalarsOfAllSetsComeFirst) {
  testkit::File file = with_quantities(0, {{"A", "a"}}, {{"V", "v"}});
  auto& second = file.add_region_set();
  second.add(testkit::mesh_sections(numbered_mesh(4)));
  add_quantities(second, {{"B", "b"}, {"A", "other"}}, {{"V", "other"}, {"U", "u"}});
  write_and_open(file);
  EXPECT_EQ((std::vector<std::string>{"a (A)", "b (B)", "v (V)", "u (U)", "MatOfElements"}), descriptions());
}

TEST_F(VariableList, OneNameMayBeAScalarAndAVector) {
  write_and_open(with_quantities(0, {{"X", "scalar"}}, {{"X", "vector"}}));
  EXPECT_EQ((std::vector<std::string>{"scalar (X)", "vector (X)", "MatOfElements"}), descriptions());
}

TEST_F(VariableList, NamesThatDifferInLetterCaseAreTwo) {
  write_and_open(with_quantities(0, {{"temp", "a"}, {"TEMP", "b"}}, {}));
  EXPECT_EQ((std::vector<std::string>{"a (temp)", "b (TEMP)", "MatOfElements"}), descriptions());
}

TEST_F(VariableList, LongestNameAndLabelAreGivenInFull) {
  const std::string name(22, 'N');
  const std::string label(32, 'L');
  write_and_open(with_quantities(0, {{name, label}}, {}));
  EXPECT_EQ(label + " (" + name + ")", host.variables()[0].description);
}

TEST_F(VariableList, TrailingBlanksAreNotPartOfNameAndLabel) {
  write_and_open(with_quantities(0, {{"P  ", "two words   "}, {"", ""}}, {}));
  EXPECT_EQ((std::vector<std::string>{"two words (P)", " ()", "MatOfElements"}), descriptions());
}

TEST_F(VariableList, QuantityNamedLikeTheMaterialIsAnOrdinaryOne) {
  write_and_open(with_quantities(0, {{"MatOfElements", "mine"}}, {}));
  EXPECT_EQ((std::vector<VariableInfo>{{"mine (MatOfElements)", 1, 4}, {"MatOfElements", 1, 1}}),
            host.variables());
}

// The file names are strncpy'd with a limit of 80; so is the material's description.
TEST_F(VariableList, TextsOfVariablesAreFilledUpWithTerminators) {
  write_and_open(testkit::file_of(numbered_mesh(4)));
  ASSERT_EQ(1, api().get_number_of_variables());
  std::array<std::array<char, 84>, 3> texts;
  for (auto& text : texts) text.fill(kUntouchedChar);
  std::array<char*, 3> rows = {texts[0].data(), texts[1].data(), texts[2].data()};
  std::array<int, 5> ints{};
  EXPECT_EQ(1, api().get_gold_variable_info(&rows[0], &rows[1], &ints[0], &ints[1], &ints[2], &rows[2],
                                            nullptr, &ints[3], &ints[4]));
  const auto expect = [&](std::size_t i, std::string text) {
    text.resize(80, '\0');
    text.append(4, kUntouchedChar);
    EXPECT_EQ(text, std::string(texts[i].data(), texts[i].size()));
  };
  expect(0, "MatOfElements");
  expect(1, "");
  expect(2, "");
}

// Descriptions and types do not depend on the last reported count; the other arrays have that many entries.
TEST_F(VariableList, AskedBeforeTheCountOnlyTypesAndDescriptionsAreWritten) {
  write_and_open(with_quantities(0, {{"P", "p"}}, {{"V", "v"}}));
  std::array<std::array<char, 80>, 9> texts;
  for (auto& text : texts) text.fill(kUntouchedChar);
  std::array<char*, 9> rows;
  for (std::size_t i = 0; i < rows.size(); ++i) rows[i] = texts[i].data();
  const std::array<int, 3> untouched = {kUntouchedInt, kUntouchedInt, kUntouchedInt};
  std::array<int, 3> types = untouched;
  std::array<int, 3> classify = untouched;
  std::array<int, 3> complex = untouched;
  std::array<int, 3> constant = untouched;
  std::array<int, 3> timeset = untouched;
  EXPECT_EQ(1, api().get_gold_variable_info(&rows[0], &rows[3], types.data(), classify.data(), complex.data(),
                                            &rows[6], nullptr, constant.data(), timeset.data()));
  EXPECT_EQ((std::array<int, 3>{1, 2, 1}), types);
  EXPECT_STREQ("p (P)", texts[0].data());
  EXPECT_STREQ("v (V)", texts[1].data());
  EXPECT_STREQ("MatOfElements", texts[2].data());
  for (const auto& array : {classify, complex, constant, timeset}) EXPECT_EQ(untouched, array);
  for (std::size_t i = 3; i < 9; ++i) {
    EXPECT_EQ(std::string(80, kUntouchedChar), std::string(texts[i].data(), 80));
  }
}

TEST_F(VariableList, AskingWritesNothingToTheErrorStream) {
  write_and_open(with_quantities(0, {{"P", "p"}}, {{"V", "v"}}));
  EXPECT_EQ("", stderr_of([&] { host.variables(); }));
}

}  // namespace
}  // namespace reader_test
