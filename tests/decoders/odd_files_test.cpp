// Files that are unusual in one way: both decoders see them alike (disagreement.h).
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "testkit/file_writer.h"
#include "testkit/small_meshes.h"
#include "testkit/temporary_directory.h"
#include "tests/decoders/disagreement.h"
#include "tests/faults/stderr_file.h"
#include "tests/reader/linked_entry_points.h"

namespace decoders {
namespace {

using testkit::Action;
using testkit::Block;
using testkit::File;
using testkit::Motion;
using testkit::Precision;
using testkit::RegionSet;
using testkit::Section;

struct OddFile {
  std::string name;
  std::function<void(File& file, RegionSet& set)> change;
  // Whether the plug-in serves all of it and inspect/ finds no error in its structure: answers are compared.
  bool is_compared = true;
};

void PrintTo(const OddFile& file, std::ostream* stream) {
  *stream << file.name;
}

File file_with_all() {
  File file = testkit::file_of(testkit::one_of_each());
  RegionSet& set = file.region_sets[0];
  set.add(testkit::scalar_section(
      {.name = "p", .label = "Pressure", .values = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}}));
  return file;
}

Motion motion_of(const std::string& volume) {
  Motion motion;
  motion.regions.push_back({.names = {volume}, .actions = {Action::translate({1.0, 2.0, 3.0})}});
  return motion;
}

// A section of any title with a block that no known section has.
Section other_section(const std::string& title) {
  return {.title = title, .blocks = {Block::integers({1, 2, 3})}};
}

Block two_more_per_record(const Block& block) {
  const auto count = static_cast<std::int32_t>(block.size());
  return block.with_rule({4, count + 2, 1});
}

const std::vector<OddFile>& odd_files() {
  static const std::vector<OddFile> files = {
      {"Usual", [](File&, RegionSet&) {}},
      {"NoElements", [](File&, RegionSet& set) { set.remove("LS_Elements"); }, false},
      {"NoElementsNorMaterials",
       [](File&, RegionSet& set) {
         set.remove("LS_Elements");
         set.remove("LS_MatOfElements");
       },
       false},
      {"ElementsOfCountZero",
       [](File&, RegionSet& set) {
         set.section("LS_Elements") = testkit::elements_section({});
         set.remove("LS_MatOfElements");
         set.section("LS_SurfaceGeometry") = testkit::surfaces_section({});
         set.section("LS_VolumeGeometry") = testkit::volumes_section({});
       },
       false},
      {"NodesOfCountZero",
       [](File& file, RegionSet& set) {
         set.sections.clear();
         set.add(testkit::nodes_section({}));
         file.header.set_bias(1);
       }},
      {"NothingButElementsOfCountZero",
       [](File&, RegionSet& set) {
         set.sections.clear();
         set.add(testkit::nodes_section({}));
         set.add(testkit::elements_section({}));
       }},
      {"SmallerRegionSetWithoutElements",
       [](File& file, RegionSet&) {
         RegionSet& second = file.add_region_set();
         second.add(testkit::mesh_sections(testkit::one_tetrahedron()));
         second.remove("LS_Elements");
         second.remove("LS_MatOfElements");
         second.section("LS_SurfaceGeometry") = testkit::surfaces_section({});
         second.section("LS_VolumeGeometry") = testkit::volumes_section({});
       }},
      {"LargerRegionSetWithoutElements",
       [](File& file, RegionSet& set) {
         set.remove("LS_Elements");
         set.remove("LS_MatOfElements");
         set.section("LS_SurfaceGeometry") = testkit::surfaces_section({});
         set.section("LS_VolumeGeometry") = testkit::volumes_section({});
         file.add_region_set().add(testkit::mesh_sections(testkit::one_tetrahedron()));
       },
       false},
      {"RegionSetWithoutNodes",
       [](File& file, RegionSet&) { file.add_region_set().add(other_section("LS_X")); }, false},
      {"SectionWhoseTitleBeginsWithNodes",
       [](File& file, RegionSet&) { file.add_region_set().add(other_section("LS_NodesOfOld")); }, false},
      {"SectionWhoseTitleBeginsWithElements",
       [](File&, RegionSet& set) { set.add(other_section("LS_ElementsOfOld")); }},
      {"SectionWhoseTitleBeginsWithMotion",
       [](File&, RegionSet& set) { set.add(other_section("LS_ALEOfOld")); }, false},
      {"MotionWithALongerTitle",
       [](File&, RegionSet& set) {
         Section section = testkit::motion_section(motion_of("lower"));
         section.title = "LS_ALE2";
         set.add(section);
       }},
      {"SectionWhoseTitleBeginsWithTheEnd",
       [](File&, RegionSet& set) { set.add(other_section("OverlapEnding")); }},
      {"EndFollowedByABlankAndText", [](File& file, RegionSet&) { file.closer = "OverlapEnd of all"; }},
      {"NodesFollowedByABlankAndText",
       [](File&, RegionSet& set) { set.section("LS_Nodes").title = "LS_Nodes of all"; }},
      {"ItemFollowedByABlankAndText",
       [](File& file, RegionSet&) {
         file.header.set_bias(1);
         file.header.item("Bias").title = "Bias of all";
       }},
      {"ScalarWithoutAName", [](File&, RegionSet& set) { set.section("LS_Scalar:p").title = "LS_Scalar:"; }},
      {"ScalarTwice",
       [](File&, RegionSet& set) {
         set.add(testkit::scalar_section(
             {.name = "p", .label = "Another", .values = std::vector<double>(11, 5.0)}));
       }},
      {"NodesTwice",
       [](File&, RegionSet& set) {
         testkit::Nodes nodes = testkit::one_of_each().nodes;
         nodes.add(9.0, 9.0, 9.0);
         set.add(testkit::nodes_section(nodes));
       }},
      {"RegionsInBothForms",
       [](File&, RegionSet& set) {
         testkit::Mesh mesh = testkit::one_of_each();
         mesh.volumes.pop_back();
         set.add(testkit::volumes_section(mesh.volumes, testkit::RegionForm::kArray));
       }},
      {"MotionFromItself",
       [](File&, RegionSet& set) { set.add(testkit::motion_section(motion_of("lower"))); }},
      {"MotionTwice",
       [](File&, RegionSet& set) {
         Motion first = motion_of("lower");
         first.regions.push_back(first.regions.front());
         first.regions[0].actions.push_back(Action::rotate({0, 0, 0}, {0, 0, 1}, 1.0));
         set.add(testkit::motion_section(first));
         set.add(testkit::motion_section(motion_of("upper")));
       }},
      {"MotionOfNothing", [](File&, RegionSet& set) { set.add(testkit::motion_section({})); }},
      {"MotionOfAnUnknownRegion",
       [](File&, RegionSet& set) { set.add(testkit::motion_section(motion_of("nowhere"))); }},
      {"MotionFromAnUnknownCycle",
       [](File&, RegionSet& set) {
         Motion motion = motion_of("lower");
         motion.base_cycle = 7;
         set.add(testkit::motion_section(motion));
       },
       false},
      {"MotionBeforeTheMesh",
       [](File&, RegionSet& set) {
         set.sections.insert(set.sections.begin(), testkit::motion_section(motion_of("lower")));
       }},
      {"NoHeaderItems", [](File& file, RegionSet&) { file.header.items.clear(); }},
      {"CycleTwice",
       [](File& file, RegionSet&) {
         Section cycle = file.header.item("Cycle");
         file.header.set_cycle(5, 0.5);
         file.header.items.push_back(cycle);
       }},
      {"DimensionOne", [](File& file, RegionSet&) { file.header.set_dimension(1); }, false},
      {"NegativeCycle", [](File& file, RegionSet&) { file.header.set_cycle(-4, 0.5); }},
      {"LargeBias", [](File& file, RegionSet&) { file.header.set_bias(100); }},
      {"NegativeBias", [](File& file, RegionSet&) { file.header.set_bias(-2); }},
      {"MarkerOfUndefinedZero", [](File& file, RegionSet&) { file.header.set_unused(0.0F, 0.0); }},
      {"MarkerOfUndefinedNegative",
       [](File& file, RegionSet&) { file.header.set_unused(-1.0e30F, -1.0e30); }},
      {"FewerValuesThanNodes",
       [](File&, RegionSet& set) {
         set.section("LS_Scalar:p") = testkit::scalar_section({.name = "p", .label = "", .values = {1, 2}});
       }},
      {"RuleOfLongerRecords",
       [](File&, RegionSet& set) {
         Block& types = set.section("LS_Elements").blocks[1];
         types = two_more_per_record(types);
       }},
      {"NamesWithANul",
       [](File&, RegionSet& set) {
         set.section("LS_VolumeGeometry").blocks[2] = Block::characters(std::string("lo\0er", 5), 5);
       }},
      {"NamesWithBlanksBeforeANul",
       [](File&, RegionSet& set) {
         set.section("LS_VolumeGeometry").blocks[2] = Block::characters(std::string("lo \0 ", 5), 5);
       }},
      {"NamesOfLengthZero",
       [](File&, RegionSet& set) {
         testkit::Mesh mesh = testkit::one_of_each();
         for (testkit::Volume& volume : mesh.volumes) volume.name.clear();
         set.section("LS_VolumeGeometry") = testkit::volumes_section(mesh.volumes);
       }},
      {"NamesOfLengthZeroInAnArray",
       [](File&, RegionSet& set) {
         testkit::Mesh mesh = testkit::one_of_each();
         for (testkit::Volume& volume : mesh.volumes) volume.name.clear();
         set.section("LS_VolumeGeometry") =
             testkit::volumes_section(mesh.volumes, testkit::RegionForm::kArray);
       }},
      {"NamesOfThreeHundredLetters",
       [](File&, RegionSet& set) {
         testkit::Mesh mesh = testkit::one_of_each();
         mesh.volumes[0].name = std::string(300, 'a');
         mesh.volumes[1].name = std::string(300, 'a') + "b";
         set.section("LS_VolumeGeometry") = testkit::volumes_section(mesh.volumes);
         set.add(testkit::motion_section(motion_of(std::string(300, 'a') + "b")));
       }},
      {"TrianglesAmongTheElements",
       [](File&, RegionSet& set) {
         testkit::Mesh mesh = testkit::one_of_each();
         mesh.elements.add(testkit::kTriangle, {0, 1, 2});
         mesh.materials.values().push_back(3);
         set.section("LS_Elements") = testkit::elements_section(mesh.elements);
         set.section("LS_MatOfElements") = testkit::materials_section(mesh.materials);
       }},
      {"LargestMaterial",
       [](File&, RegionSet& set) {
         set.section("LS_MatOfElements") = testkit::materials_section(std::vector{0, 1, 2, 9999});
       }},
      {"TooLargeMaterial",
       [](File&, RegionSet& set) {
         set.section("LS_MatOfElements") = testkit::materials_section(std::vector{0, 1, 2, 10000});
       },
       false},
      {"MaterialsFarBelowZero",
       [](File&, RegionSet& set) {
         set.section("LS_MatOfElements") = testkit::materials_section(std::vector{-9998, 1, 0, -3});
       },
       false},
      {"MaterialsTooFarApart",
       [](File&, RegionSet& set) {
         set.section("LS_MatOfElements") = testkit::materials_section(std::vector{-9999, 1, 0, -3});
       },
       false},
      {"MaterialsAcrossAllIntegers",
       [](File&, RegionSet& set) {
         set.section("LS_MatOfElements") =
             testkit::materials_section(std::vector<std::int32_t>{INT32_MIN, INT32_MAX, 0, -3});
       },
       false},
      {"TextAfterTheEnd", [](File& file, RegionSet&) { file.trailing_bytes = "more"; }},
      {"NoEnd", [](File& file, RegionSet&) { file.closer.reset(); }, false},
      {"NoHeaderEnd", [](File& file, RegionSet&) { file.header_end.reset(); }, false},
      {"RegionSetWithoutANumber", [](File&, RegionSet& set) { set.opener = "OverlapStart_"; }},
      {"RegionSetWithAnyName", [](File&, RegionSet& set) { set.opener = "OverlapStart_of the fan"; }},
      {"ItemInTheRegionSet",
       [](File& file, RegionSet& set) {
         set.add(testkit::header_item("Bias", file.header.item("Bias").blocks));
       },
       false},
      {"SectionTitledLikeAnItem",
       [](File&, RegionSet& set) { set.add({.title = "Comments", .blocks = {Block::integer(3)}}); }, false},
  };
  return files;
}

class OddFiles : public testing::TestWithParam<OddFile> {};

TEST_P(OddFiles, AreTheSameForBoth) {
  const testkit::TemporaryDirectory directory;
  File file = file_with_all();
  GetParam().change(file, file.region_sets[0]);
  testkit::write_file(file, directory / "case.fld");
  std::string found;
  bool was_compared = false;
  {
    const faults::StderrFile silence;
    found = disagreement(reader_test::linked_entry_points(), directory / "case.fld", &was_compared);
  }
  EXPECT_EQ(found, "");
  EXPECT_EQ(was_compared, GetParam().is_compared);
}

// Readers take a file for a step with a mesh when a title begins with "LS_Nodes".
TEST(OddSeries, ATitleThatBeginsWithNodesMakesAStep) {
  const testkit::TemporaryDirectory directory;
  testkit::write_file(file_with_all(), directory / "case_0.fld");
  File second;
  second.header.set_cycle(1, 0.0);
  second.add_region_set().add(other_section("LS_NodesOfOld"));
  testkit::write_file(second, directory / "case_1.fld");
  std::string found;
  bool was_compared = false;
  {
    const faults::StderrFile silence;
    found = disagreement(reader_test::linked_entry_points(), directory / "case_0.fld", &was_compared);
  }
  EXPECT_EQ(found, "");
  EXPECT_TRUE(was_compared);
}

INSTANTIATE_TEST_SUITE_P(Changes, OddFiles, testing::ValuesIn(odd_files()),
                         [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace decoders
