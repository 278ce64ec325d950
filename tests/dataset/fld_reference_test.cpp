// Which file's geometry applies to a file of a series.
#include "dataset/fld.h"
#include "tests/dataset/dataset_test.h"

namespace fld {
namespace {

constexpr char kReference[] = "const FLDFile *FLD::refGeometryFLDFile(int, int) const";

// A series of `files` files with `regions` region sets each, cycle numbers 0, 10, 20, ...; only the first
// file has geometry.
FLD series(int files, size_t regions) {
  FLD fld;
  for (int i = 0; i < files; ++i) {
    FLDFile& file = fld.m_fld.emplace_back("file " + std::to_string(i));
    file.m_cycle = 10 * i;
    file.m_overlap.resize(regions);
    for (FLDSEEKOverlap& overlap : file.m_overlap) overlap.m_hasGeometry = i == 0;
  }
  return fld;
}

void set_motion(FLD& fld, size_t file, size_t region, int base_cycle) {
  fld.m_fld[file].m_overlap[region].m_hasALE = true;
  fld.m_fld[file].m_overlap[region].m_ale.base_cycle = base_cycle;
}

TEST(ReferenceFile, IsTheNearestEarlierFileWithGeometry) {
  FLD fld = series(6, 2);
  fld.m_fld[2].m_overlap[1].m_hasGeometry = true;
  EXPECT_EQ(fld.refGeometryFLDFile(5, 1), &fld.m_fld[2]);
  EXPECT_EQ(fld.refGeometryFLDFile(2, 1), &fld.m_fld[2]);
  EXPECT_EQ(fld.refGeometryFLDFile(1, 1), &fld.m_fld[0]);
  EXPECT_EQ(fld.refGeometryFLDFile(5, 0), &fld.m_fld[0]);
}

TEST(ReferenceFile, IsNoneWhenNoFileHasGeometry) {
  FLD fld = series(3, 1);
  fld.m_fld[0].m_overlap[0].m_hasGeometry = false;
  EXPECT_EQ(fld.refGeometryFLDFile(2, 0), nullptr);
  EXPECT_EQ(fld.nearestGeometryFLDFile(2, 0), nullptr);
}

TEST(ReferenceFile, OfAMotionIsTheFirstFileOfItsBaseCycle) {
  FLD fld = series(4, 1);
  fld.m_fld[1].m_cycle = 100;
  fld.m_fld[2].m_cycle = 100;
  set_motion(fld, 3, 0, 100);
  EXPECT_EQ(fld.refGeometryFLDFile(3, 0), &fld.m_fld[1]);
}

TEST(ReferenceFile, OfAMotionIsItsBaseEvenIfTheFileHasGeometry) {
  FLD fld = series(4, 1);
  set_motion(fld, 2, 0, 30);
  fld.m_fld[2].m_overlap[0].m_hasGeometry = true;
  EXPECT_EQ(fld.refGeometryFLDFile(2, 0), &fld.m_fld[3]);
}

TEST(ReferenceFile, OfAMotionWhoseBaseIsMissingIsNone) {
  FLD fld = series(4, 1);
  set_motion(fld, 2, 0, 100);
  fld.m_fld[2].m_overlap[0].m_hasGeometry = true;
  EXPECT_EQ(fld.refGeometryFLDFile(2, 0), nullptr);
}

TEST(ReferenceFile, MotionOfAnotherRegionSetOrStepDoesNotMatter) {
  FLD fld = series(3, 2);
  set_motion(fld, 1, 0, 20);
  set_motion(fld, 2, 1, 20);
  EXPECT_EQ(fld.refGeometryFLDFile(1, 1), &fld.m_fld[0]);
  EXPECT_EQ(fld.refGeometryFLDFile(2, 0), &fld.m_fld[0]);
}

TEST(ReferenceFile, OutsideTheFilesOrRegionSetsIsNone) {
  const FLD fld = series(2, 1);
  for (const int file : {2, -1, 2147483647, -2147483647 - 1}) {
    EXPECT_EQ(fld.refGeometryFLDFile(file, 0), nullptr) << file;
  }
  for (const int region : {1, -1, 2147483647, -2147483647 - 1}) {
    EXPECT_EQ(fld.refGeometryFLDFile(0, region), nullptr) << region;
  }
  EXPECT_EQ(FLD().refGeometryFLDFile(0, 0), nullptr);
}

TEST(NearestGeometryFile, LeavesMotionsAside) {
  FLD fld = series(4, 1);
  fld.m_fld[1].m_overlap[0].m_hasGeometry = true;
  set_motion(fld, 3, 0, 0);
  EXPECT_EQ(fld.nearestGeometryFLDFile(3, 0), &fld.m_fld[1]);
}

TEST(ReferenceFileDeathTest, EarlierFileWithFewerRegionSetsIsAnAssertion) {
  FLD fld = series(3, 2);
  fld.m_fld[1].m_overlap.resize(1);
  EXPECT_ASSERTION(fld.refGeometryFLDFile(2, 1), "fld", kReference,
                   "static_cast< size_t >( ioverlap ) < m_fld[i].m_overlap.size()");
  EXPECT_EQ(fld.refGeometryFLDFile(1, 1), nullptr);
}

TEST(FindByCycle, FindsTheFirstFileOfThatCycle) {
  FLD fld = series(4, 1);
  fld.m_fld[3].m_cycle = 10;
  EXPECT_EQ(fld.findFLDFileByCycle(10), &fld.m_fld[1]);
  EXPECT_EQ(fld.findFLDFileByCycle(20), &fld.m_fld[2]);
  EXPECT_EQ(fld.findFLDFileByCycle(30), nullptr);
  EXPECT_EQ(FLD().findFLDFileByCycle(0), nullptr);
}

TEST(IndexOfFile, IsItsPosition) {
  const FLD fld = series(3, 1);
  EXPECT_EQ(fld.index_of(&fld.m_fld[0]), 0);
  EXPECT_EQ(fld.index_of(fld.refGeometryFLDFile(2, 0)), 0);
  EXPECT_EQ(fld.index_of(fld.findFLDFileByCycle(20)), 2);
}

}  // namespace
}  // namespace fld
