// Parts switched on by branches of their tree.
#include <gtest/gtest.h>
#include <vtkDataAssembly.h>

#include "samples/channel.h"
#include "testkit/temporary_directory.h"
#include "tests/paraview/paraview_reader.h"

namespace paraview_test {
namespace {

using Names = std::vector<std::string>;

class PartTree : public testing::Test {
 protected:
  void choose(const Names& selectors) {
    reader_->ClearPartSelectors();
    for (const std::string& selector : selectors) reader_->AddPartSelector(selector.c_str());
  }
  Names shown() {
    EXPECT_TRUE(reader_.open_as_it_is());
    reader_->Update();
    return reader_.shown_parts();
  }

  testkit::TemporaryDirectory directory_;
  Reader reader_{samples::channel::write(directory_.path()).file};
};

TEST_F(PartTree, HasAllPartsWhateverIsShown) {
  EXPECT_EQ(reader_->GetAssembly(), nullptr);
  ASSERT_TRUE(reader_.open_as_it_is());
  vtkDataAssembly* const tree = reader_->GetAssembly();
  ASSERT_NE(tree, nullptr);
  EXPECT_EQ(tree->GetDataSetIndices(0).size(), static_cast<std::size_t>(reader_->GetNumberOfPartArrays()));
  const auto below = [&](const char* path) {
    return tree->GetDataSetIndices(tree->GetFirstNodeByPath(path)).size();
  };
  EXPECT_EQ(below("/Parts/Surfaces"), 8U);
  EXPECT_EQ(below("/Parts/Surfaces/Grouping_Regions"), 1U);
  EXPECT_EQ(below("/Parts/Volumes"), 3U);
  EXPECT_EQ(below("/Parts/Wholemesh"), 1U);
}

TEST_F(PartTree, SwitchesOnWhatItsBranchesHave) {
  choose({"/Parts/Volumes", "/Parts/Surfaces/Undefined_Regions"});
  EXPECT_EQ(shown(), (Names{"@wake_plane", "upstream", "around_obstacle", "wake"}));
  choose({"/Parts/Volumes/wake"});
  EXPECT_EQ(shown(), Names{"wake"});
  choose({});
  EXPECT_EQ(shown(), Names{});
}

TEST_F(PartTree, ShowsTheWholeMeshAtFirst) {
  choose({"/Parts/Wholemesh"});
  EXPECT_EQ(shown(), Names{"ALL_ELEMENTS"});
}

TEST_F(PartTree, AndTheListOfPartsHoldAsTheyWereSetLast) {
  ASSERT_TRUE(reader_.open_as_it_is());
  reader_.show_only("wake");
  // As ParaView gives them when it makes the reader.
  choose({"/Parts/Wholemesh"});
  EXPECT_EQ(shown(), Names{"wake"});
  choose({"/Parts/Volumes"});
  EXPECT_EQ(shown().size(), 3U);
  reader_.show_only("upstream");
  EXPECT_EQ(shown(), Names{"upstream"});
}

TEST_F(PartTree, IgnoresSelectorsThatSelectNothing) {
  choose({"/Parts/Nothing", "", "///[[", "/Parts/Volumes/wake"});
  reader_->AddPartSelector(nullptr);
  EXPECT_EQ(shown(), Names{"wake"});
}

TEST_F(PartTree, HasAnotherTagAfterEachOpening) {
  EXPECT_EQ(reader_->GetAssemblyTag(), 0);
  ASSERT_TRUE(reader_.open_as_it_is());
  EXPECT_EQ(reader_->GetAssemblyTag(), 1);
  reader_->Refresh();
  ASSERT_TRUE(reader_.update());
  EXPECT_EQ(reader_->GetAssemblyTag(), 2);
}

}  // namespace
}  // namespace paraview_test
