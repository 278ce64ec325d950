// The hierarchy of the parts, and the names in it.
#include <gtest/gtest.h>
#include <optional>
#include <vtkDataAssembly.h>

#include "samples/channel.h"
#include "samples/overset.h"
#include "testkit/file_writer.h"
#include "testkit/small_meshes.h"
#include "testkit/temporary_directory.h"
#include "tests/paraview/paraview_reader.h"

namespace paraview_test {
namespace {

using Names = std::vector<std::string>;

class Hierarchy : public testing::Test {
 protected:
  // Opens a file and shows all parts.
  Reader& show(const std::filesystem::path& file) {
    reader_.emplace(file);
    EXPECT_TRUE(reader_->open());
    for (const std::string& name : reader_->part_names()) (*reader_)->SetPartArrayStatus(name.c_str(), 1);
    EXPECT_TRUE(reader_->update());
    return *reader_;
  }
  vtkDataAssembly* assembly() { return reader_->output()->GetDataAssembly(); }

  // The parts that a selector selects.
  Names parts_below(const char* path) {
    Names names;
    const Names shown = reader_->shown_parts();
    for (const unsigned index : assembly()->GetDataSetIndices(assembly()->SelectNodes({path})))
      names.push_back(shown.at(index));
    return names;
  }

  // Of the children of the node at the path.
  Names node_names(const char* path) {
    Names names;
    for (const int node : assembly()->GetChildNodes(assembly()->GetFirstNodeByPath(path), false))
      names.emplace_back(assembly()->GetNodeName(node));
    return names;
  }

  testkit::TemporaryDirectory directory_;
  std::optional<Reader> reader_;
};

TEST_F(Hierarchy, HasTheGroupsOfParts) {
  Reader& reader = show(samples::channel::write(directory_.path()).file);
  EXPECT_EQ(parts_below("/Parts/Surfaces/Grouping_Regions"), Names{"&VFG_walls"});
  EXPECT_EQ(parts_below("/Parts/Surfaces/Undefined_Regions"), Names{"@wake_plane"});
  EXPECT_EQ(parts_below("/Parts/Volumes"), (Names{"upstream", "around_obstacle", "wake"}));

  reader->SetGroupParts(false);
  ASSERT_TRUE(reader.update());
  EXPECT_TRUE(parts_below("/Parts/Surfaces/Grouping_Regions").empty());
  EXPECT_EQ(parts_below("/Parts/Surfaces").size(), 8U);
}

TEST_F(Hierarchy, HasANodeOfItsOwnForEveryPart) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  const testkit::Surface wall = mesh.surfaces.front();
  mesh.surfaces.clear();
  // Two names in Japanese, and two that differ only in characters that node names cannot have.
  for (const char* name : {"\x8a\x4f", "\x95\xc7", "wall", "wall!"}) {
    mesh.surfaces.push_back(wall);
    mesh.surfaces.back().name = name;
  }
  testkit::write_file(testkit::file_of(mesh), directory_ / "names.fld");
  show(directory_ / "names.fld");
  EXPECT_EQ(node_names("/Parts/Surfaces"), (Names{"_1", "_2", "wall", "wall_4"}));
  EXPECT_EQ(parts_below("/Parts/Surfaces/_2"), Names{"壁"});
  EXPECT_EQ(parts_below("/Parts/Surfaces/wall"), Names{"wall"});
  EXPECT_EQ(parts_below("/Parts/Surfaces/wall_4"), Names{"wall!"});
  const int node = assembly()->GetFirstNodeByPath("/Parts/Surfaces/_1");
  EXPECT_STREQ(assembly()->GetAttributeOrDefault(node, "label", ""), "外");
}

TEST_F(Hierarchy, TellsTheRegionSetsOfWholeMeshes) {
  show(samples::overset::write(directory_.path()).file);
  EXPECT_EQ(parts_below("/Parts/Wholemesh"),
            (Names{"ALL_ELEMENTS (region set 0)", "ALL_ELEMENTS (region set 1)"}));
}

}  // namespace
}  // namespace paraview_test
