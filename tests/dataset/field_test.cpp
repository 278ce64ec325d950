// The variable catalogue.
#include "dataset/field.h"

#include "tests/dataset/dataset_test.h"

namespace fld {
namespace {

using Names = std::vector<std::string>;

// Appends titles of these names, each with the label.
template <class Title>
void add(fld::SharedList<Title>& titles, const Names& names, const std::string& label = "label") {
  for (const std::string& name : names) {
    Title& title = titles.own().emplace_back();
    name.copy(title.m_name, 32);
    label.copy(title.m_label, 32);
  }
}

FLDFile file_with(const Names& scalars, const Names& vectors, const std::string& label = "label") {
  FLDFile file("file");
  file.m_overlap.resize(1);
  add(file.m_overlap[0].m_scalars, scalars, label);
  add(file.m_overlap[0].m_vectors, vectors, label);
  return file;
}

TEST(Field, IsEmptyAtFirst) {
  const Field field;
  EXPECT_TRUE(field.scalar_names().empty());
  EXPECT_TRUE(field.scalar_labels().empty());
  EXPECT_TRUE(field.vector_names().empty());
  EXPECT_TRUE(field.vector_labels().empty());
}

TEST(Field, HasTheQuantitiesOfAllFilesInOrderOfTheirFirstAppearance) {
  Field field;
  field.append(file_with({"A", "B"}, {"X"}));
  field.append(file_with({"B", "C"}, {"W", "X"}));
  EXPECT_EQ(field.scalar_names(), (Names{"A", "B", "C"}));
  EXPECT_EQ(field.vector_names(), (Names{"X", "W"}));
}

TEST(Field, ListsANameOfSeveralRegionSetsOnce) {
  FLDFile file("file");
  file.m_overlap.resize(3);
  add(file.m_overlap[0].m_scalars, {"P"});
  add(file.m_overlap[1].m_scalars, {"T", "P"});
  add(file.m_overlap[1].m_vectors, {"V"});
  add(file.m_overlap[2].m_scalars, {"P", "K"});
  add(file.m_overlap[2].m_vectors, {"V", "U"});
  Field field;
  field.append(file);
  EXPECT_EQ(field.scalar_names(), (Names{"P", "T", "K"}));
  EXPECT_EQ(field.vector_names(), (Names{"V", "U"}));
}

TEST(Field, KeepsTheLabelOfTheFirstAppearance) {
  Field field;
  field.append(file_with({"T"}, {"V"}, "of file 1"));
  field.append(file_with({"T", "P"}, {"V", "U"}, "of file 2"));
  EXPECT_EQ(field.scalar_labels(), (Names{"of file 1", "of file 2"}));
  EXPECT_EQ(field.vector_labels(), (Names{"of file 1", "of file 2"}));
}

TEST(Field, KeepsTheFirstLabelWithinARegionSetToo) {
  FLDFile file("file");
  file.m_overlap.resize(1);
  add(file.m_overlap[0].m_scalars, {"T"}, "first");
  add(file.m_overlap[0].m_scalars, {"T"}, "second");
  Field field;
  field.append(file);
  EXPECT_EQ(field.scalar_names(), Names{"T"});
  EXPECT_EQ(field.scalar_labels(), Names{"first"});
}

TEST(Field, NameMayBeAScalarAndAVector) {
  Field field;
  field.append(file_with({"Q"}, {}));
  field.append(file_with({}, {"Q"}));
  EXPECT_EQ(field.scalar_names(), Names{"Q"});
  EXPECT_EQ(field.vector_names(), Names{"Q"});
}

TEST(Field, NamesThatDifferInCaseAreTwo) {
  Field field;
  field.append(file_with({"Temp", "TEMP"}, {"v", "V"}));
  EXPECT_EQ(field.scalar_names(), (Names{"Temp", "TEMP"}));
  EXPECT_EQ(field.vector_names(), (Names{"v", "V"}));
}

TEST(Field, EmptyNameIsAName) {
  Field field;
  field.append(file_with({"", "A", ""}, {}));
  EXPECT_EQ(field.scalar_names(), (Names{"", "A"}));
  EXPECT_EQ(field.scalar_labels(), (Names{"label", "label"}));
}

TEST(Field, FileWithoutQuantitiesAddsNothing) {
  Field field;
  field.append(FLDFile("file"));
  field.append(file_with({}, {}));
  EXPECT_TRUE(field.scalar_names().empty());
  EXPECT_TRUE(field.vector_names().empty());
}

TEST(Field, NamesAndLabelsOfFullLengthAreWhole) {
  Field field;
  field.append(file_with({"twenty-two characters."}, {}, "thirty-two characters of a label"));
  EXPECT_EQ(field.scalar_names(), Names{"twenty-two characters."});
  EXPECT_EQ(field.scalar_labels(), Names{"thirty-two characters of a label"});
}

}  // namespace
}  // namespace fld
