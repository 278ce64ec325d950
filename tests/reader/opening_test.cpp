// Opening valid datasets.
#include <filesystem>
#include <string>

#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

using testkit::file_of;
using testkit::one_tetrahedron;

class Opening : public LoadedReader {
 protected:
  // The messages of a successful opening.
  std::string text_of_opening(const std::filesystem::path& path, const std::string& second = "") {
    return stderr_of([&] { EXPECT_EQ(1, host.open(path, second)); });
  }
};

TEST_F(Opening, SingleFileIsTracedForItsIndexAndItsGeometry) {
  const auto path = write(file_of(one_tetrahedron()));
  EXPECT_EQ(trace(path) + trace(path) + "read done\n", text_of_opening(path));
  EXPECT_EQ(3, host.part_count());
}

TEST_F(Opening, EveryFileOfASeriesIsIndexedAndTheGeometryOfTheFirstRead) {
  for (const int cycle : {100, 20, 3})
    write(file_at(cycle, {numbered_mesh(4)}), "case_" + std::to_string(cycle) + ".fld");
  EXPECT_EQ(trace(in("case_3.fld")) + trace(in("case_20.fld")) + trace(in("case_100.fld")) +
                trace(in("case_3.fld")) + "read done\n",
            text_of_opening(in("case_20.fld")));
  EXPECT_EQ((std::vector<float>{3.0F, 20.0F, 100.0F}), host.times(2));
}

TEST_F(Opening, GeometryOfEveryRegionSetIsRead) {
  const auto path = write(file_at(0, {numbered_mesh(4), numbered_mesh(5), numbered_mesh(6)}));
  EXPECT_EQ(trace(path) + trace(path) + trace(path) + trace(path) + "read done\n", text_of_opening(path));
  EXPECT_EQ(3, host.part_count());
}

TEST_F(Opening, RecordsWithoutElementsAreRead) {
  const testkit::Block empty_record = testkit::Block::raw(std::string(8, '\0'));  // its two markers
  testkit::Mesh mesh = numbered_mesh(4);
  mesh.surfaces.push_back({.name = "empty"});
  testkit::File file = file_of(mesh);
  auto& surfaces = file.region_sets[0].section("LS_SurfaceGeometry").blocks;
  surfaces[4] = testkit::Block::rule_alone({4, 3, 1});  // the face types
  surfaces.insert(surfaces.begin() + 5, empty_record);
  auto& materials = file.region_sets[0].section("LS_MatOfElements").blocks;
  materials[1] = materials[1].with_rule({4, 1, 2});
  materials.push_back(empty_record);
  open(write(file));
  EXPECT_EQ((std::vector<std::string>{"empty", "ALL_ELEMENTS"}), host.part_names());
}

TEST_F(Opening, NameWithoutACycleIsOneFileWhateverIsBesideIt) {
  write(file_at(1, {numbered_mesh(4)}), "case_1.fld");
  open(write(file_at(9, {numbered_mesh(4)}), "case.fld"));
  EXPECT_EQ((std::vector<float>{9.0F}), host.times(2));
}

// The last four characters of the names of a series are ignored, and so is letter case.
TEST_F(Opening, SeriesTakesNamesInAnyCaseAndWithAnyExtension) {
  const testkit::Mesh mesh = numbered_mesh(4);
  write(file_at(1, {mesh}), "case_0100.fld");
  write(file_at(2, {mesh}), "case_0200.fld");
  write(file_at(3, {mesh}), "CASE_0300.FLD");
  write(file_at(4, {mesh}), "case_0400.bak");
  write(file_at(5, {mesh}), "case2_0500.fld");
  open(in("case_0200.fld"));
  EXPECT_EQ((std::vector<float>{1.0F, 2.0F, 3.0F, 4.0F}), host.times(2));
}

TEST_F(Opening, ExtensionMayBeInUpperCaseOrLonger) {
  open(write(file_of(one_tetrahedron()), "one.FLD"));
  open(write(file_of(one_tetrahedron()), "two.fldx"));
}

TEST_F(Opening, SecondNameIsNotLookedAt) {
  const auto path = write(file_of(one_tetrahedron()));
  const std::string quiet = text_of_opening(path);
  EXPECT_EQ(quiet, text_of_opening(path, "/nowhere/at/all.fld"));
  EXPECT_EQ(quiet, text_of_opening(path, std::string(100000, 'x')));
  std::string name = path.string();
  EXPECT_EQ(quiet, stderr_of([&] { EXPECT_EQ(1, api().set_filenames(name.data(), nullptr, nullptr, 1)); }));
}

TEST_F(Opening, PathsAreLongerThanTheReadersBuffers) {
  std::filesystem::path folder = in("deep");
  for (int depth = 0; depth < 12; ++depth) folder /= std::string(200, static_cast<char>('a' + depth));
  std::filesystem::create_directories(folder);
  for (const int cycle : {1, 2}) {
    testkit::write_file(file_at(cycle, {numbered_mesh(4)}),
                        folder / ("case_" + std::to_string(cycle) + ".fld"));
  }
  open(folder / "case_2.fld");
  EXPECT_EQ(2, api().get_num_of_time_steps(2));
}

TEST_F(Opening, FileNameItselfMayBeAsLongAsTheSystemAllows) {
  const std::string name(243, 'n');
  write(file_at(1, {numbered_mesh(4)}), name + "_1.fld");
  write(file_at(2, {numbered_mesh(4)}), name + "_22.fld");
  open(in(name + "_1.fld"));
  EXPECT_EQ(2, api().get_num_of_time_steps(2));
}

TEST_F(Opening, HeaderWithoutAnyItemOpensAtCycle0) {
  testkit::File file = file_of(one_tetrahedron());
  file.header.items.clear();
  write_and_open(file);
  EXPECT_EQ((std::vector<float>{0.0F}), host.times(1));
  EXPECT_EQ((Rows{{1, 2, 3, 4}}), host.rows(3, 14));
}

TEST_F(Opening, HeaderItemsMayComeInAnyOrderAmongUnknownOnes) {
  testkit::File file = file_of(one_tetrahedron());
  file.header.items.clear();
  file.header.set_unused(5.0F, 5.0);
  file.header.set(testkit::header_item(
      "Weather", {testkit::Block::characters("fine", 8), testkit::Block::integers({1, 2, 3})}));
  file.header.set_cycle(7, 0.5, testkit::Precision::kSingle);
  file.header.set_bias(1);
  file.header.set_dimension(3);
  write_and_open(file);
  EXPECT_EQ((std::vector<float>{0.5F}), host.times(1));
  EXPECT_EQ((Rows{{1, 2, 3, 4}}), host.rows(3, 14));
}

TEST_F(Opening, DimensionOtherThan2And3Opens) {
  testkit::File file = file_of(one_tetrahedron());
  file.header.set_dimension(1);
  write_and_open(file);
  EXPECT_EQ(3, host.part_count());
}

TEST_F(Opening, ArrayFormsOfTheRegionSectionsGiveTheSameParts) {
  testkit::Mesh mesh = testkit::one_of_each();
  open(write(file_of(mesh), "per_region.fld"));
  const auto parts = host.parts();
  const Rows faces = host.rows(1, 10);
  open(write(file_of(mesh, {.surface_form = testkit::RegionForm::kArray,
                            .volume_form = testkit::RegionForm::kArray,
                            .name_length = 40,
                            .conn_length_width = 4}),
             "gathered.fld"));
  EXPECT_EQ(parts, host.parts());
  EXPECT_EQ(faces, host.rows(1, 10));
}

TEST_F(Opening, IndexBase1GivesTheSamePartsAsIndexBase0) {
  testkit::File file = file_of(testkit::one_of_each());
  open(write(file, "base0.fld"));
  const auto parts = host.parts();
  const Rows hexahedra = host.rows(3, 26);
  file.header.set_bias(1);
  open(write(file, "base1.fld"));
  EXPECT_EQ(parts, host.parts());
  EXPECT_EQ(hexahedra, host.rows(3, 26));
}

TEST_F(Opening, UnknownSectionsAndBytesBehindTheEndAreNotLookedAt) {
  testkit::File file = file_of(one_tetrahedron());
  file.region_sets[0].sections.insert(
      file.region_sets[0].sections.begin(),
      testkit::Section{.title = "LS_Something", .blocks = {testkit::Block::integers({1, 2, 3}).cut(2)}});
  file.trailing_bytes = "anything";
  write_and_open(file);
  EXPECT_EQ(3, host.part_count());
}

// A region set without nodes needs no tables.
TEST_F(Opening, MeshWithoutNodesOpensWithEmptyParts) {
  testkit::Mesh mesh;
  mesh.surfaces = {{.name = "nothing"}};
  write_and_open(file_of(mesh));
  EXPECT_EQ((std::vector<PartInfo>{{1, 0, "nothing", 0, {}}, {2, 0, "ALL_ELEMENTS", 0, {}}}), host.parts());
}

}  // namespace
}  // namespace reader_test
