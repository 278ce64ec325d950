#include "tests/inspect/checked.h"

#include "inspect/byte_source.h"
#include "testkit/motion.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "tests/inspect/series_files.h"

namespace inspect_test {
namespace {

using testkit::Action;

void add_quantities(testkit::RegionSet& set, const testkit::Nodes& nodes, testkit::Precision precision) {
  set.add(
      testkit::scalar_section({.name = "p", .label = "Pressure", .values = nodes.x, .precision = precision}));
  set.add(
      testkit::vector_section({.name = "v", .label = "Velocity", .x = nodes.x, .y = nodes.y, .z = nodes.z}));
}

testkit::Motion every_motion() {
  const std::array<testkit::Vec3, 4> corners{{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
  return {
      .base_cycle = 7,
      .regions = {{.names = {"lower", "upper"},
                   .actions = {Action::rotate({0, 0, 0}, {0, 0, 1}, 0.5), Action::translate({1, 2, 3})}},
                  {.names = {"upper"},
                   .actions = {Action::scale({0, 0, 0}, {1, 1, 2}), Action::four_points(corners, corners)}}}};
}

}  // namespace

testkit::File small_file() {
  const testkit::Mesh mesh = testkit::one_tetrahedron();
  testkit::File file = testkit::file_of(mesh);
  add_quantities(file.region_sets.front(), mesh.nodes, testkit::Precision::kSingle);
  return file;
}

testkit::File small_file_at(std::int32_t cycle, double time) {
  testkit::File file = small_file();
  file.header.set_cycle(cycle, time);
  return file;
}

testkit::File rich_file() {
  testkit::Mesh mesh = testkit::one_of_each();
  mesh.nodes.precision[1] = testkit::Precision::kDouble;
  mesh.coordinate_system = 0;
  testkit::File file = testkit::file_of(mesh);
  file.split = 3;
  file.header.set_cycle(7, 0.25);
  add_quantities(file.region_sets.front(), mesh.nodes, testkit::Precision::kDouble);
  file.region_sets.front().add(testkit::motion_section(every_motion()));

  testkit::RegionSet& second = file.add_region_set();
  second.add(testkit::mesh_sections(mesh, {.surface_form = testkit::RegionForm::kArray,
                                           .volume_form = testkit::RegionForm::kArray,
                                           .conn_length_width = 4}));
  second.add(testkit::Section{.title = "LS_Unheard", .blocks = {testkit::Block::integers({1, 2, 3})}});
  return file;
}

std::string with_integer(std::string bytes, std::uint64_t offset, std::int32_t value) {
  const auto word = static_cast<std::uint32_t>(value);
  for (unsigned i = 0; i < 4; ++i) bytes[offset + i] = static_cast<char>(word >> (24 - 8 * i));
  return bytes;
}

std::string line(int number, std::uint64_t offset, const std::string& wanted, const std::string& found) {
  return "FLD-" + std::to_string(number) + " at " + std::to_string(offset) + ": wanted " + wanted +
         ", found " + found;
}

Lines lines(const inspect::FileReport& report) {
  Lines all;
  for (const inspect::Finding& finding : report.findings.kept()) {
    all.push_back(line(static_cast<int>(finding.kind), finding.offset, finding.wanted, finding.found));
  }
  return all;
}

Lines told(const std::string& bytes) {
  inspect::StringSource source(bytes);
  return lines(inspect::check_bytes(source, {.full = true}));
}

bool finds(const std::string& bytes, bool full) {
  inspect::StringSource source(bytes);
  return !inspect::check_bytes(source, {.full = full}).findings.is_fine();
}

}  // namespace inspect_test
