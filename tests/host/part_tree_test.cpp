// The hierarchy of parts.
#include "host/part_tree.h"

#include "gtest/gtest.h"
#include <vector>

#include "samples/channel.h"
#include "testkit/small_meshes.h"
#include "testkit/temporary_directory.h"
#include "tests/host/open_file.h"

namespace {

using Parts = std::vector<int>;

class PartTree : public testing::Test {
 protected:
  PartTree() { reader.session().open(samples::channel::write(directory.path()).file); }

  testkit::TemporaryDirectory directory;
  host_test::Reader reader;
};

TEST_F(PartTree, HasTheReadersGroupsBelowTheSurfaces) {
  const auto tree = host::make_part_tree(reader.session());
  ASSERT_EQ(tree.size(), 3U);
  EXPECT_EQ(tree[0].name, "Surfaces");
  EXPECT_EQ(tree[0].parts, (Parts{1, 2, 3, 4, 5, 6}));
  ASSERT_EQ(tree[0].folders.size(), 2U);
  EXPECT_EQ(tree[0].folders[0].name, "Grouping_Regions");
  EXPECT_EQ(tree[0].folders[0].parts, (Parts{7}));
  EXPECT_EQ(tree[0].folders[1].name, "Undefined_Regions");
  EXPECT_EQ(tree[0].folders[1].parts, (Parts{8}));
  EXPECT_EQ(tree[1].name, "Volumes");
  EXPECT_EQ(tree[1].parts, (Parts{9, 10, 11}));
  EXPECT_EQ(tree[2].name, "Whole mesh");
  EXPECT_EQ(tree[2].parts, (Parts{12}));
}

TEST_F(PartTree, OfSomePartsHasNoEmptyFolders) {
  const auto tree = host::make_part_tree(reader.session(), {8, 12});
  ASSERT_EQ(tree.size(), 2U);
  EXPECT_TRUE(tree[0].parts.empty());
  ASSERT_EQ(tree[0].folders.size(), 1U);
  EXPECT_EQ(tree[0].folders[0].name, "Undefined_Regions");
  EXPECT_EQ(tree[1].name, "Whole mesh");
}

TEST(PartTreeOfNothing, IsEmpty) {
  host_test::OpenFile file(testkit::file_of(testkit::one_tetrahedron()));
  EXPECT_TRUE(host::make_part_tree(file.session(), {}).empty());
}

}  // namespace
