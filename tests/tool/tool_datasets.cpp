#include "tests/tool/tool_datasets.h"

#include <numeric>
#include <string>
#include <vector>

#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"

namespace tool_test {

testkit::File one_of_each_file() {
  testkit::Mesh mesh = testkit::one_of_each();
  mesh.surface("outside").name = kOutsideBytes;
  std::vector<double> numbers(mesh.nodes.x.values().size());
  std::iota(numbers.begin(), numbers.end(), 0.0);
  numbers[0] = 1.0e30;

  testkit::File file = testkit::file_of(mesh);
  testkit::RegionSet& set = file.region_sets.front();
  set.add(testkit::scalar_section({.name = "p", .label = kPressureBytes, .values = numbers}));
  set.add(testkit::vector_section(
      {.name = "v", .label = "Position", .x = mesh.nodes.x, .y = mesh.nodes.y, .z = mesh.nodes.z}));
  return file;
}

void remove_lower(testkit::File& file) {
  file.region_sets.front().section("LS_VolumeGeometry") =
      testkit::volumes_section({testkit::one_of_each().volume("upper")});
}

std::string write_series_that_loses_a_part(const std::filesystem::path& directory) {
  testkit::File file = one_of_each_file();
  testkit::write_file(file, directory / "s_0.fld");
  remove_lower(file);
  file.header.set_cycle(1, 1.0);
  testkit::write_file(file, directory / "s_1.fld");
  return (directory / "s_0.fld").string();
}

std::string write_series_with_a_broken_step(const std::filesystem::path& directory) {
  for (int cycle = 1; cycle <= 3; ++cycle) {
    testkit::File file = one_of_each_file();
    file.header.set_cycle(cycle, cycle);
    if (cycle == 2) file.region_sets.front().section("LS_Elements").blocks[0] = testkit::Block::integer(-5);
    testkit::write_file(file, directory / ("case_" + std::to_string(cycle) + ".fld"));
  }
  return (directory / "case_1.fld").string();
}

OneFile::OneFile(const testkit::File& file, const std::string& name) : name_(name) {
  testkit::write_file(file, directory_ / name);
}

}  // namespace tool_test
