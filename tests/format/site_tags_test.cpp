// The allocation tags of each section's arrays, in the order of the leak report: newest first.
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <vector>

#include "format/elements.h"
#include "format/mat_of_elements.h"
#include "format/nodes.h"
#include "format/quantity.h"
#include "format/surface_geometry.h"
#include "format/volume_geometry.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "tests/format/input.h"
#include "tests/support/empty_list.h"

namespace {

using testkit::RegionForm;

using SiteTags = EmptyList;

std::string report_of(std::initializer_list<int> tags) {
  std::string report;
  for (const int tag : tags) report += "MEMORY LEAK DETECTED " + std::to_string(tag) + "\n";
  return report;
}

// The report frees the arrays, so their objects must release them.
void forget(fld::SurfaceGeometry& surface) {
  surface.name = nullptr;
  surface.faceType = surface.faceLink = surface.faceNode = nullptr;
}
void forget(fld::VolumeGeometry& volume) {
  volume.name = nullptr;
  volume.elem = nullptr;
}

template <class Region>
std::string report_of(const testkit::Section& section,
                      void (*read)(FILE*, std::vector<fld::smart_ptr<Region>>&)) {
  const Input input(body_of(section));
  std::vector<fld::smart_ptr<Region>> list;
  read(input.stream(), list);
  std::string report = leak_report();
  for (auto& region : list) forget(*region);
  return report;
}

const testkit::Mesh kMesh = testkit::one_tetrahedron();

TEST_F(SiteTags, OfSurfaces) {
  EXPECT_EQ(report_of(testkit::surfaces_section(kMesh.surfaces), fld::FLDV4_SurfaceGeometry),
            report_of({1100268, 1100265, 1100263, 1100259}));
}

TEST_F(SiteTags, OfGatheredSurfaces) {
  EXPECT_EQ(report_of(testkit::surfaces_section(kMesh.surfaces, RegionForm::kArray),
                      fld::FLDV4_SurfaceGeometryArray),
            report_of({1100349, 1100325, 1100312, 1100296}));
}

TEST_F(SiteTags, OfVolumes) {
  EXPECT_EQ(report_of(testkit::volumes_section(kMesh.volumes), fld::FLDV4_VolumeGeometry),
            report_of({1100379, 1100375}));
}

TEST_F(SiteTags, OfGatheredVolumes) {
  EXPECT_EQ(
      report_of(testkit::volumes_section(kMesh.volumes, RegionForm::kArray), fld::FLDV4_VolumeGeometryArray),
      report_of({1100423, 1100407}));
}

TEST_F(SiteTags, OfElements) {
  const Input input(body_of(testkit::elements_section(kMesh.elements)));
  const auto elements = fld::FLDV4_Elements(input.stream());
  EXPECT_EQ(leak_report(), report_of({1100443, 1100440}));
  elements->type = elements->conn = nullptr;
}

TEST_F(SiteTags, OfMaterials) {
  const Input input(body_of(testkit::materials_section(kMesh.materials)));
  const auto materials = fld::FLDV4_MatOfElements(input.stream());
  EXPECT_EQ(leak_report(), report_of({1100457}));
  materials->mat = nullptr;
}

TEST_F(SiteTags, OfNodes) {
  const Input input(body_of(testkit::nodes_section(kMesh.nodes)));
  const auto nodes = fld::FLDV4_Nodes(input.stream());
  EXPECT_EQ(leak_report(), report_of({1100142, 1100142, 1100142}));
  nodes->x.data = nodes->y.data = nodes->z.data = nullptr;
}

TEST_F(SiteTags, OfQuantities) {
  const Input input(body_of(testkit::scalar_section({.name = "p", .label = "P", .values = {1.0}})));
  const auto scalar = fld::FLDV4_Scalar(input.stream());
  EXPECT_EQ(leak_report(), report_of({1100142}));
  scalar->values.data = nullptr;
}

}  // namespace
