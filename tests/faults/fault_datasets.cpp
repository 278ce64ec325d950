#include "tests/faults/fault_datasets.h"

#include "testkit/small_meshes.h"
#include "tests/reader/small_datasets.h"

namespace faults {
namespace {

using testkit::Action;
using testkit::Precision;
using testkit::RegionForm;

constexpr std::size_t kNameLength = 12;
constexpr double kUndefined = 1.0e30;

testkit::Section scalar(const std::string& name, std::vector<double> values, Precision precision) {
  return testkit::scalar_section(
      {.name = name, .label = name + " [-]", .values = std::move(values), .precision = precision});
}

// Every kind of action.
testkit::Section every_motion(int base_cycle) {
  return testkit::motion_section(
      {.base_cycle = base_cycle,
       .regions = {{.names = {"lower"},
                    .actions = {Action::rotate({0, 0, 0}, {0, 0, 1}, 0.5),
                                Action::scale({0, 0, 0}, {2, 2, 2})}},
                   {.names = {"upper", "nobody"},
                    .actions = {Action::translate({1, 0, 0}),
                                Action::four_points({{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
                                                    {{{1, 0, 0}, {2, 0, 0}, {1, 1, 0}, {1, 0, 1}}})}}},
       .name_length = kNameLength});
}

}  // namespace

testkit::File every_construct() {
  testkit::File file = reader_test::file_at(3, 0.25);
  file.header.set_bias(1);
  file.header.set_unused(1.0e30F, kUndefined);
  file.split = 7;

  testkit::Mesh first = testkit::one_of_each();
  first.nodes.precision = {Precision::kDouble, Precision::kSingle, Precision::kDouble};
  first.coordinate_system = 1;
  first.surfaces[0].add(testkit::kLineFace, {0, 1});
  testkit::RegionSet& plain = file.add_region_set();
  plain.add(testkit::mesh_sections(first, {.name_length = kNameLength}));
  plain.add(every_motion(3));
  plain.add(scalar("Temp", {1, 2, kUndefined, 4, 5, 6, 7, 8, 9, 10, 11}, Precision::kSingle));
  plain.add(scalar("Pres", {1, 2, 3, kUndefined}, Precision::kDouble));
  plain.add(reader_test::numbered_vector("Velo", 11));
  plain.add({.title = "LS_Other", .blocks = {testkit::Block::integer(5)}});

  testkit::Mesh second = testkit::one_tetrahedron();
  testkit::Mesh& mesh = second;
  for (int i = 4; i < 8; ++i) mesh.nodes.add(i, 0.5 * i, -i);
  reader_test::add_element(mesh, testkit::kTriangle, 1);
  reader_test::add_element(mesh, testkit::kQuadrilateral, 4);
  mesh.materials = {1, -2, 3};
  testkit::RegionSet& gathered = file.add_region_set();
  gathered.add(testkit::mesh_sections(mesh, {.surface_form = RegionForm::kArray,
                                             .volume_form = RegionForm::kArray,
                                             .name_length = kNameLength,
                                             .conn_length_width = 4}));
  gathered.add(scalar("Temp", {8, 7, 6, 5, 4, 3, 2, 1}, Precision::kDouble));
  gathered.add(reader_test::numbered_vector("Velo", 8));
  return file;
}

testkit::File base_of_series() {
  testkit::File file = reader_test::file_at(0, {testkit::one_of_each()});
  file.region_sets[0].add(reader_test::numbered_scalar("Temp", 11));
  return file;
}

testkit::File motion_of_series() {
  testkit::File file = reader_test::file_at(1, 0.5);
  testkit::RegionSet& set = file.add_region_set();
  set.add(every_motion(0));
  set.add(reader_test::numbered_scalar("Temp", 11, 100.0));
  set.add(reader_test::numbered_scalar("Heat", 11, 200.0));
  return file;
}

testkit::File small_of_changing_series() {
  return reader_test::file_at(0, {testkit::one_tetrahedron()});
}

testkit::File large_of_changing_series() {
  testkit::Mesh mesh = testkit::one_of_each();
  for (int first = 0; first < 3; ++first) reader_test::add_element(mesh, testkit::kHexahedron, first);
  return reader_test::file_at(1, {mesh});
}

testkit::File good_file() {
  testkit::File file = testkit::file_of(testkit::one_of_each());
  file.region_sets[0].add(reader_test::numbered_scalar("Temp", 11));
  file.region_sets[0].add(reader_test::numbered_vector("Velo", 11));
  return file;
}

}  // namespace faults
