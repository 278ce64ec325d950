// The labels of variables as an array.
#include "vtk/labels.h"

#include <gtest/gtest.h>

#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "tests/host/open_file.h"

namespace {

TEST(Labels, AreThoseOfTheVariablesThatHaveOne) {
  testkit::File file = testkit::file_of(testkit::one_tetrahedron());
  testkit::RegionSet& set = file.region_sets.front();
  set.add(testkit::scalar_section({.name = "p", .label = "Pressure [Pa]", .values = {1, 2, 3, 4}}));
  set.add(testkit::scalar_section({.name = "q", .label = "", .values = {1, 2, 3, 4}}));
  set.add(testkit::scalar_section({.name = "t", .label = "Temperature", .values = {1, 2, 3, 4}}));
  host_test::OpenFile opened(file);
  const auto labels = vtkdata::make_labels(opened.session());
  EXPECT_STREQ(labels->GetName(), "Labels");
  ASSERT_EQ(labels->GetNumberOfValues(), 2);
  EXPECT_EQ(labels->GetValue(0), "p: Pressure [Pa]");
  EXPECT_EQ(labels->GetValue(1), "t: Temperature");
}

}  // namespace
