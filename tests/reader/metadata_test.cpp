// The block of part groups.
#include <array>
#include <string>

#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

const std::string kOpening =
    "<?xml version=\"1.0\" encoding=\"shift_jis\"?>\n"
    "<CEImetadata version=\"1.0\">\n"
    "  <parts>\n"
    "    <partlist>\n";
const std::string kClosing =
    "    </partlist>\n"
    "  </parts>\n"
    "</CEImetadata>";
const std::string kWholeMesh = "      <part name=\"ALL_ELEMENTS\"></part>\n";

class Metadata : public LoadedReader {
 protected:
  void SetUp() override { set_option(1); }
  void set_option(int on) {
    std::array<int, 2> toggles = {0, on};
    api().set_extra_gui_data(toggles.data(), nullptr, nullptr);
  }
  static testkit::Mesh with_regions(const std::vector<std::string>& surfaces,
                                    const std::vector<std::string>& volumes) {
    testkit::Mesh mesh = numbered_mesh(4);
    for (const auto& name : surfaces) add_triangle_surface(mesh, name, {0, 1, 2});
    for (const auto& name : volumes) add_volume(mesh, name, {0});
    return mesh;
  }
  void open_with(const std::vector<std::string>& surfaces, const std::vector<std::string>& volumes) {
    write_and_open(testkit::file_of(with_regions(surfaces, volumes)));
  }
};

TEST_F(Metadata, GroupsComeFirstThenPlainSurfacesThenVolumesThenTheWholeMesh) {
  open_with({"WALL", "@A", "&VFG_1"}, {"FLUID"});
  EXPECT_EQ(kOpening +
                "    <group name=\"Grouping_Regions\">\n"
                "        <part name=\"&amp;VFG_1\"></part>\n"
                "    </group>\n"
                "    <group name=\"Undefined_Regions\">\n"
                "       <part name=\"@A\"></part>\n"
                "    </group>\n"
                "      <part name=\"WALL\"></part>\n"
                "      <part name=\"FLUID\"></part>\n" +
                kWholeMesh + kClosing,
            host.metadata());
}

TEST_F(Metadata, PlainNamesAloneMakeNoGroup) {
  open_with({"inlet", "outlet"}, {"air", "water"});
  EXPECT_EQ(kOpening +
                "      <part name=\"inlet\"></part>\n"
                "      <part name=\"outlet\"></part>\n"
                "      <part name=\"air\"></part>\n"
                "      <part name=\"water\"></part>\n" +
                kWholeMesh + kClosing,
            host.metadata());
}

TEST_F(Metadata, OneKindOfNameMakesOneGroup) {
  open_with({"&VFG", "&VFG2"}, {});
  EXPECT_EQ(kOpening +
                "    <group name=\"Grouping_Regions\">\n"
                "        <part name=\"&amp;VFG\"></part>\n"
                "        <part name=\"&amp;VFG2\"></part>\n"
                "    </group>\n" +
                kWholeMesh + kClosing,
            host.metadata());
  open_with({"@", "@@x"}, {});
  EXPECT_EQ(kOpening +
                "    <group name=\"Undefined_Regions\">\n"
                "       <part name=\"@\"></part>\n"
                "       <part name=\"@@x\"></part>\n"
                "    </group>\n" +
                kWholeMesh + kClosing,
            host.metadata());
}

TEST_F(Metadata, OnlyTheFirstCharactersDecideAndNothingElseIsEscaped) {
  open_with({"&VF", "&vfg", "VFG&", "a@", " @", "x<y>\"&z\""}, {});
  EXPECT_EQ(kOpening +
                "      <part name=\"&VF\"></part>\n"
                "      <part name=\"&vfg\"></part>\n"
                "      <part name=\"VFG&\"></part>\n"
                "      <part name=\"a@\"></part>\n"
                "      <part name=\" @\"></part>\n"
                "      <part name=\"x<y>\"&z\"\"></part>\n" +
                kWholeMesh + kClosing,
            host.metadata());
}

TEST_F(Metadata, VolumesAreNeverGrouped) {
  open_with({}, {"@fluid", "&VFG_fluid"});
  EXPECT_EQ(kOpening +
                "      <part name=\"@fluid\"></part>\n"
                "      <part name=\"&VFG_fluid\"></part>\n" +
                kWholeMesh + kClosing,
            host.metadata());
}

TEST_F(Metadata, EachListRunsThroughAllRegionSets) {
  write_and_open(
      file_at(0, {with_regions({"a", "@b", "&VFGc"}, {"d"}), with_regions({"e", "@f", "&VFGg"}, {"h"})}));
  EXPECT_EQ(kOpening +
                "    <group name=\"Grouping_Regions\">\n"
                "        <part name=\"&amp;VFGc\"></part>\n"
                "        <part name=\"&amp;VFGg\"></part>\n"
                "    </group>\n"
                "    <group name=\"Undefined_Regions\">\n"
                "       <part name=\"@b\"></part>\n"
                "       <part name=\"@f\"></part>\n"
                "    </group>\n"
                "      <part name=\"a\"></part>\n"
                "      <part name=\"e\"></part>\n"
                "      <part name=\"d\"></part>\n"
                "      <part name=\"h\"></part>\n" +
                kWholeMesh + kWholeMesh + kClosing,
            host.metadata());
}

TEST_F(Metadata, NamesAreGivenInFullHoweverLong) {
  const std::string name(1000, 'n');
  open_with({}, {name});
  EXPECT_EQ(kOpening + "      <part name=\"" + name + "\"></part>\n" + kWholeMesh + kClosing,
            host.metadata());
}

TEST_F(Metadata, NamesWithPercentSignsStayAsTheyAre) {
  open_with({}, {"%s%n%d"});
  EXPECT_EQ(kOpening + "      <part name=\"%s%n%d\"></part>\n" + kWholeMesh + kClosing, host.metadata());
}

TEST_F(Metadata, AskedForTheLengthItIsWithoutTheTerminatorAndTheTextIsEchoed) {
  open_with({}, {});
  const std::string text = kOpening + kWholeMesh + kClosing;
  int size = kUntouchedInt;
  EXPECT_EQ("XML0\n" + text, stderr_of([&] { EXPECT_EQ(1, api().get_metadata(&size, nullptr)); }));
  EXPECT_EQ(static_cast<int>(text.size()), size);
}

TEST_F(Metadata, AskedForTheTextTheSizeIsNotTouchedAndTheTextIsEchoed) {
  open_with({}, {});
  const std::string text = kOpening + kWholeMesh + kClosing;
  std::string buffer(text.size() + 10, kUntouchedChar);
  int size = kUntouchedInt;
  EXPECT_EQ("XML1\n" + text, stderr_of([&] { EXPECT_EQ(1, api().get_metadata(&size, buffer.data())); }));
  EXPECT_EQ(text + '\0' + std::string(9, kUntouchedChar), buffer);
  EXPECT_EQ(kUntouchedInt, size);
}

TEST_F(Metadata, OptionOffHasNoBlockAndEchoesNothing) {
  open_with({"@A"}, {});
  set_option(0);
  int size = kUntouchedInt;
  EXPECT_EQ("", stderr_of([&] { EXPECT_EQ(1, api().get_metadata(&size, nullptr)); }));
  EXPECT_EQ(0, size);
  char buffer = kUntouchedChar;
  size = kUntouchedInt;
  EXPECT_EQ("", stderr_of([&] { EXPECT_EQ(1, api().get_metadata(&size, &buffer)); }));
  EXPECT_EQ(kUntouchedChar, buffer);
  EXPECT_EQ(kUntouchedInt, size);
}

TEST_F(Metadata, WithoutADatasetTheListIsEmpty) {
  EXPECT_EQ(kOpening + kClosing, host.metadata());
  open_with({"@A"}, {});
  stderr_of([&] { api().exit_routine(); });
  EXPECT_EQ(kOpening + kClosing, host.metadata());
}

TEST_F(Metadata, BlockFollowsTheGeometryOfTheStep) {
  write(file_at(1, {with_regions({"before"}, {})}), "case_1.fld");
  write(file_at(2, {with_regions({"@after"}, {})}), "case_2.fld");
  open(in("case_1.fld"));
  const std::string before = host.metadata();
  select(1, 1);
  EXPECT_EQ(kOpening +
                "    <group name=\"Undefined_Regions\">\n"
                "       <part name=\"@after\"></part>\n"
                "    </group>\n" +
                kWholeMesh + kClosing,
            host.metadata());
  select(1, 0);
  EXPECT_EQ(before, host.metadata());
}

}  // namespace
}  // namespace reader_test
