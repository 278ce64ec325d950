// The work tables: their sizes, the offsets of the elements, and what happens when memory is exhausted.
#include "reader/work_tables.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <sys/resource.h>

#include "reader/globals.h"
#include "support/errors.h"
#include "support/tracked_allocation.h"
#include "tests/reader/linked_reader.h"
#include "tests/reader/small_datasets.h"
#include "tests/testkit/emulator.h"

namespace reader_test {
namespace {

using fld::allocMemoryForGeometry;

class WorkTables : public LinkedReader {
 protected:
  static void expect_no_tables() {
    EXPECT_TRUE(fld::g_mark_node.empty());
    EXPECT_TRUE(fld::g_globalNode2localNode.empty());
    EXPECT_EQ(nullptr, fld::g_ele2head.heads);
  }
  // Tables of four zeroed nodes and one element.
  void make_small_tables() { ASSERT_EQ(0, allocMemoryForGeometry(geometry_of({numbered_mesh(4)}))); }
  static void expect_small_tables() {
    EXPECT_EQ(4U, fld::g_mark_node.size());
    EXPECT_EQ(4U, fld::g_globalNode2localNode.size());
    ASSERT_NE(nullptr, fld::g_ele2head.heads);
    EXPECT_EQ(0, fld::element_offsets(0)[0]);
  }
  static std::vector<long> heads(int count, int set = 0) {
    const long* const begin = fld::element_offsets(set);
    return {begin, begin + count};
  }
};
using WorkTablesDeathTest = WorkTables;

TEST_F(WorkTables, HaveAnEntryPerNodeAndPerElementAllZero) {
  testkit::Mesh mesh = numbered_nodes(20);
  for (const auto code : {testkit::kHexahedron, testkit::kTetrahedron, testkit::kPyramid, testkit::kPrism}) {
    add_element(mesh, code, 0);
  }
  EXPECT_EQ(0, allocMemoryForGeometry(geometry_of({mesh})));
  ASSERT_EQ(20U, fld::g_mark_node.size());
  ASSERT_EQ(20U, fld::g_globalNode2localNode.size());
  EXPECT_EQ(20, std::count(fld::g_mark_node.begin(), fld::g_mark_node.end(), 0));
  EXPECT_EQ(20, std::count(fld::g_globalNode2localNode.begin(), fld::g_globalNode2localNode.end(), 0));
  EXPECT_EQ((std::vector<long>{0, 8, 12, 17}), heads(4));
}

TEST_F(WorkTables, FollowTheRegionSetWithTheMostNodes) {
  testkit::Mesh small = numbered_nodes(8);
  add_element(small, testkit::kHexahedron, 0);
  add_element(small, testkit::kHexahedron, 0);
  testkit::Mesh large = numbered_nodes(9);
  add_element(large, testkit::kPyramid, 0);
  add_element(large, testkit::kPrism, 0);
  EXPECT_EQ(0, allocMemoryForGeometry(geometry_of({small, large})));
  EXPECT_EQ(9U, fld::g_mark_node.size());
  EXPECT_EQ((std::vector<long>{0, 5}), heads(2, 1));
}

TEST_F(WorkTables, EarlierRegionSetWinsOnATie) {
  testkit::Mesh first = numbered_nodes(8);
  testkit::Mesh second = numbered_nodes(8);
  for (int i = 0; i < 2; ++i) {
    add_element(first, testkit::kPyramid, 0);
    add_element(second, testkit::kPrism, 0);
  }
  EXPECT_EQ(0, allocMemoryForGeometry(geometry_of({first, second})));
  EXPECT_EQ((std::vector<long>{0, 5}), heads(2));
}

TEST_F(WorkTables, RegionSetThatDisagreesHasOffsetsOfItsOwn) {
  testkit::Mesh first = numbered_nodes(9);
  testkit::Mesh second = numbered_nodes(8);
  for (int i = 0; i < 3; ++i) {
    add_element(first, testkit::kPyramid, 0);
    add_element(second, i == 1 ? testkit::kPrism : testkit::kPyramid, 0);
  }
  EXPECT_EQ(0, allocMemoryForGeometry(geometry_of({first, second, first})));
  const auto offsets = [](int set) {
    const long* begin = fld::element_offsets(set);
    return std::vector<long>(begin, begin + 3);
  };
  EXPECT_EQ((std::vector<long>{0, 5, 10}), offsets(0));
  EXPECT_EQ((std::vector<long>{0, 5, 11}), offsets(1));
  EXPECT_EQ(fld::element_offsets(0), fld::element_offsets(2)) << "those that agree share one table";
}

TEST_F(WorkTables, GeometryWithoutRegionSetsOrNodesNeedsNone) {
  make_small_tables();
  EXPECT_EQ(0, allocMemoryForGeometry(fld::make_smart<fld::Geometry>()));
  expect_no_tables();
  make_small_tables();
  EXPECT_EQ(0, allocMemoryForGeometry(geometry_of({testkit::Mesh()})));
  expect_no_tables();
  auto bare = fld::make_smart<fld::Geometry>();
  bare->geos.resize(2);
  EXPECT_EQ(0, allocMemoryForGeometry(bare));
  expect_no_tables();
}

TEST_F(WorkTables, NodesWithoutElementsAreRefusedAndTheTablesKept) {
  make_small_tables();
  EXPECT_EQ(2, allocMemoryForGeometry(geometry_of({numbered_nodes(10)})));
  expect_small_tables();
  EXPECT_EQ(2, allocMemoryForGeometry(geometry_of({numbered_mesh(5), numbered_nodes(10)})));
  expect_small_tables();
  fld::freeMemoryForGeometry();
  EXPECT_EQ(2, allocMemoryForGeometry(geometry_of({numbered_nodes(10)})));
  expect_no_tables();
}

TEST_F(WorkTables, AreReleasedAtAnyTime) {
  fld::freeMemoryForGeometry();
  expect_no_tables();
  make_small_tables();
  fld::freeMemoryForGeometry();
  expect_no_tables();
  EXPECT_EQ(0U, fld::g_mark_node.capacity());
  EXPECT_EQ(0U, fld::g_globalNode2localNode.capacity());
  fld::freeMemoryForGeometry();
}

TEST_F(WorkTables, OffsetsOfASingleRegionSetAreFilledInWhenAskedFor) {
  testkit::Mesh mesh = numbered_nodes(20);
  for (const auto code : {testkit::kHexahedron, testkit::kTetrahedron}) add_element(mesh, code, 0);
  write_and_open(testkit::file_of(mesh));
  host.rows(1, 26);
  EXPECT_EQ(0, fld::g_ele2head.heads[1]) << "the whole mesh does without";
  EXPECT_EQ((std::vector<long>{0, 8}), heads(2));
  EXPECT_EQ(8, fld::g_ele2head.heads[1]);
}

TEST_F(WorkTables, OffsetsFollowTheElementsOfAStep) {
  for (const int cycle : {1, 2}) {
    testkit::Mesh mesh = numbered_nodes(20);
    add_element(mesh, cycle == 1 ? testkit::kHexahedron : testkit::kPrism, 0);
    add_element(mesh, testkit::kTetrahedron, 0);
    write(file_at(cycle, {mesh}), "case_" + std::to_string(cycle) + ".fld");
  }
  open(in("case_1.fld"));
  select(1, 1);
  EXPECT_EQ((std::vector<long>{0, 6}), heads(2)) << "never filled before";
  select(1, 0);
  EXPECT_EQ((std::vector<long>{0, 8}), heads(2)) << "filled for other elements before";
}

// Steps alternate between prisms and pyramids; in the last one the meshes are also larger.
TEST_F(WorkTables, OffsetsOfVeryManyRegionSetsFollowTheElementsOfAStep) {
  constexpr int kSets = 100;
  const auto code_of = [](int cycle, int set) {
    return (cycle + set) % 2 == 0 ? testkit::kPyramid : testkit::kPrism;
  };
  for (const int cycle : {0, 1, 2}) {
    std::vector<testkit::Mesh> meshes;
    for (int set = 0; set < kSets; ++set) {
      testkit::Mesh& mesh = meshes.emplace_back(numbered_nodes(cycle == 2 ? 20 + set : 20));
      for (int e = 0; e < 2 + set % 2; ++e) add_element(mesh, code_of(cycle, set), e);
    }
    write(file_at(cycle, meshes), "case_" + std::to_string(cycle) + ".fld");
  }
  open(in("case_0.fld"));
  bool has_grown = false;
  for (const int step : {1, 0, 2, 0, 1}) {
    select(1, step);
    has_grown = has_grown || step == 2;
    EXPECT_EQ(has_grown ? 119U : 20U, fld::g_mark_node.size()) << step;
    for (int set = 0; set < kSets; ++set) {
      const long nodes = code_of(step, set) == testkit::kPyramid ? 5 : 6;
      EXPECT_EQ((std::vector<long>{0, nodes}), heads(2, set)) << step << ", " << set;
      if (set % 2 != 0) {
        EXPECT_EQ((std::vector<long>{0, nodes, 2 * nodes}), heads(3, set)) << step << ", " << set;
      }
    }
  }
}

TEST_F(WorkTables, OffsetsAreATrackedBlockOfTheirOwn) {
  fld::set_memory();
  std::vector<int> types = {34, 38};
  fld::aloc_ele2head(2, types.data());
  EXPECT_EQ("MEMORY LEAK DETECTED 1000165\n", stderr_of([] { fld::free_memory(); }));
}

TEST_F(WorkTables, OffsetsAddUpTheNodesOfTheSolidShapes) {
  std::vector<int> types = {34, 35, 36, 38, 34};
  long* offsets = nullptr;
  EXPECT_EQ("", stderr_of([&] { offsets = fld::aloc_ele2head(5, types.data()); }));
  EXPECT_EQ((std::vector<long>{0, 4, 9, 15, 23}), std::vector<long>(offsets, offsets + 5));
  fld::cv_mfree(offsets);
}

TEST_F(WorkTables, OtherCodesAddNothingAndAreReportedWithoutALineEnd) {
  std::vector<int> types = {23, 34, 24, 38, 0, 133, 34};
  long* offsets = nullptr;
  EXPECT_EQ(
      "HANDLING AN INVALID DATA TYPE(1000174).HANDLING AN INVALID DATA TYPE(1000174)."
      "HANDLING AN INVALID DATA TYPE(1000174).HANDLING AN INVALID DATA TYPE(1000174).",
      stderr_of([&] { offsets = fld::aloc_ele2head(7, types.data()); }));
  EXPECT_EQ((std::vector<long>{0, 0, 4, 4, 12, 12, 12}), std::vector<long>(offsets, offsets + 7));
  fld::cv_mfree(offsets);
}

// Calls to write(2) that this process has made.
long count_writes() {
  std::ifstream io("/proc/self/io");
  std::string name;
  long value = 0;
  while (io >> name >> value) {
    if (name == "syscw:") return value;
  }
  return -1;
}

TEST_F(WorkTables, ManyOtherCodesAreReportedWithFewWrites) {
  constexpr int kCount = 250050;
  std::vector<int> types(kCount, 99);
  long writes = 0;
  const std::string text = stderr_of([&] {
    const long before = count_writes();
    fld::cv_mfree(fld::aloc_ele2head(kCount, types.data()));
    writes = count_writes() - before;
  });
  EXPECT_EQ(kCount * std::string("HANDLING AN INVALID DATA TYPE(1000174).").size(), text.size());
  EXPECT_GT(kCount / 50, writes);
}

TEST_F(WorkTables, NoElementsHaveNoOffsets) {
  EXPECT_EQ(nullptr, fld::aloc_ele2head(0, nullptr));
}

TEST_F(WorkTables, GrowWithALargerMeshOfALaterStepAndStayWhenItShrinks) {
  write(file_at(1, {numbered_mesh(4)}), "case_1.fld");
  write(file_at(2, {numbered_mesh(400)}), "case_2.fld");
  open(in("case_1.fld"));
  EXPECT_EQ(4U, fld::g_mark_node.size());
  select(1, 1);
  EXPECT_EQ(400U, fld::g_mark_node.size());
  EXPECT_EQ(400U, fld::g_globalNode2localNode.size());
  select(1, 0);
  EXPECT_EQ(400U, fld::g_mark_node.size());
}

TEST_F(WorkTables, StepWithTheSameMeshAllocatesNothing) {
  for (const int cycle : {1, 2}) {
    write(file_at(cycle, {numbered_mesh(40), numbered_mesh(4)}), "case_" + std::to_string(cycle) + ".fld");
  }
  open(in("case_1.fld"));
  const char* const marks = fld::g_mark_node.data();
  const long* const offsets = fld::g_ele2head.heads.get();
  select(1, 1);
  EXPECT_EQ(marks, fld::g_mark_node.data());
  EXPECT_EQ(offsets, fld::g_ele2head.heads.get());
}

TEST_F(WorkTables, RequestsForPartsAllocateNothing) {
  write_and_open(testkit::file_of(testkit::one_of_each()));
  const char* const marks = fld::g_mark_node.data();
  const int* const locals = fld::g_globalNode2localNode.data();
  const fld::AllocationNode* const newest = fld::memory;
  for (int part = 1; part <= 5; ++part) {
    host.coordinates(part);
    for (const auto& [slot, count] : host.part(part).elements) host.rows(part, slot, count);
    host.materials(part, 26);
  }
  EXPECT_EQ(marks, fld::g_mark_node.data());
  EXPECT_EQ(locals, fld::g_globalNode2localNode.data());
  EXPECT_EQ(newest, fld::memory);
}

#ifndef FLD_SANITIZED
// Limits the process to `megabytes` from now on.
void limit_memory(rlim_t megabytes) {
  const rlimit limit = {megabytes << 20U, megabytes << 20U};
  if (setrlimit(RLIMIT_AS, &limit) != 0) std::exit(99);
}

TEST_F(WorkTablesDeathTest, ExhaustedMemoryForNodesIsReportedAndTheTablesAreKept) {
  if (kUnderEmulator) GTEST_SKIP() << "qemu-user does not limit memory";
  make_small_tables();
  fld::smart_ptr<fld::Geometry> geometry = geometry_of({numbered_mesh(4)});
  geometry->geos[0].nodes->nnode = 2000000000;
  EXPECT_EXIT(
      {
        limit_memory(512);
        const bool is_right = allocMemoryForGeometry(geometry) == 1 && fld::g_mark_node.size() == 4 &&
                              fld::g_globalNode2localNode.size() == 4 && fld::g_ele2head.heads != nullptr;
        std::exit(is_right ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
  geometry->geos[0].nodes->nnode = 4;
}

TEST_F(WorkTablesDeathTest, ExhaustedMemoryForOffsetsThrowsAndTheTablesAreKept) {
  if (kUnderEmulator) GTEST_SKIP() << "qemu-user does not limit memory";
  make_small_tables();
  fld::smart_ptr<fld::Geometry> geometry = geometry_of({numbered_mesh(4)});
  geometry->geos[0].elements->nelem = 2000000000;
  EXPECT_EXIT(
      {
        limit_memory(512);
        try {
          allocMemoryForGeometry(geometry);
        } catch (const fld::MemoryAllocException& error) {
          const bool is_right = error.getMessage() == std::string("NOT ENOUGH MEMORY") &&
                                fld::g_mark_node.size() == 4 && fld::g_ele2head.heads != nullptr;
          std::exit(is_right ? 0 : 1);
        }
        std::exit(2);
      },
      testing::ExitedWithCode(0), "");
  geometry->geos[0].elements->nelem = 1;
}

TEST_F(WorkTablesDeathTest, StepWhoseMeshDoesNotFitTheMemoryHasAnEmptyRegionSet) {
  if (kUnderEmulator) GTEST_SKIP() << "qemu-user does not limit memory";
  write_and_open(testkit::file_of(numbered_mesh(4)));
  const PartInfo empty = {1, 0, "ALL_ELEMENTS", 0, {}};
  EXPECT_EXIT(
      {
        limit_memory(512);
        fld::g_fldgeo->geos[0].nodes->nnode = 2000000000;
        fld::fit_work_tables(*fld::g_fldgeo, 0);
        std::exit(host.part(1) == empty && fld::g_fldgeo->loadedStep[0] == -1 ? 0 : 1);
      },
      testing::ExitedWithCode(0), "^error : failed to allocate memory for geometry.\n$");
}
#endif

}  // namespace
}  // namespace reader_test
