// Datasets at the edges of what there is, for the tests of the Python package.
//
//   odd_datasets FOLDER
//
//   empty_parts.fld   a tetrahedron with surface "wall" and volume "fluid"; surface "no faces" and volume
//                     "no elements" are empty; scalar "p" is 1, 2, 3, 4, vector "v" is (p, 2p, 3p)
//   one_node.fld      a node at (1, 2, 3) with p = 7, which is all corners of the only element, a tetrahedron
//                     in volume "cell", and of the only face of surface "point"
//   no_regions.fld    the tetrahedron of empty_parts.fld without surfaces and volumes
//   empty_regions.fld   the same with the empty surface and the empty volume alone
//   japanese.fld      that tetrahedron with the volume "流体" and the scalar "圧力", labelled "静圧 [Pa]", in
//                     Shift_JIS
//   other_0.fld, other_1.fld, other_2.fld   that tetrahedron; four elements on 11 nodes with p = 1.5; the
//                     tetrahedron again
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"

namespace {

namespace fs = std::filesystem;

testkit::File tetrahedron_file(const testkit::Mesh& mesh) {
  testkit::File file = testkit::file_of(mesh);
  file.region_sets.front().add(testkit::scalar_section({.name = "p", .values = {1, 2, 3, 4}}));
  file.region_sets.front().add(
      testkit::vector_section({.name = "v", .x = {1, 2, 3, 4}, .y = {2, 4, 6, 8}, .z = {3, 6, 9, 12}}));
  return file;
}

void write_empty_parts(const fs::path& folder) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces.push_back({.name = "no faces"});
  mesh.volumes.push_back({.name = "no elements"});
  testkit::write_file(tetrahedron_file(mesh), folder / "empty_parts.fld");
}

void write_one_node(const fs::path& folder) {
  testkit::Mesh mesh;
  mesh.nodes.add(1, 2, 3);
  testkit::Surface& point = mesh.surfaces.emplace_back(testkit::Surface{.name = "point"});
  point.add(testkit::kTriangleFace, {0, 0, 0});
  mesh.elements.add(testkit::kTetrahedron, {0, 0, 0, 0});
  mesh.volumes = {{.name = "cell", .elements = {0}}};
  testkit::File file = testkit::file_of(mesh);
  file.region_sets.front().add(testkit::scalar_section({.name = "p", .values = {7}}));
  testkit::write_file(file, folder / "one_node.fld");
}

void write_no_regions(const fs::path& folder) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces.clear();
  mesh.volumes.clear();
  testkit::write_file(tetrahedron_file(mesh), folder / "no_regions.fld");
  mesh.surfaces = {{.name = "no faces"}};
  mesh.volumes = {{.name = "no elements"}};
  testkit::write_file(tetrahedron_file(mesh), folder / "empty_regions.fld");
}

void write_japanese(const fs::path& folder) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.volumes.front().name = "\x97\xac\x91\xcc";
  testkit::File file = testkit::file_of(mesh);
  file.region_sets.front().add(testkit::scalar_section(
      {.name = "\x88\xb3\x97\xcd", .label = "\x90\xc3\x88\xb3 [Pa]", .values = {1, 2, 3, 4}}));
  testkit::write_file(file, folder / "japanese.fld");
}

void write_other_meshes(const fs::path& folder) {
  for (int step = 0; step < 3; ++step) {
    testkit::File file = tetrahedron_file(testkit::one_tetrahedron());
    if (step == 1) {
      file = testkit::file_of(testkit::one_of_each());
      file.region_sets.front().add(
          testkit::scalar_section({.name = "p", .values = std::vector<double>(11, 1.5)}));
    }
    file.header.set_cycle(step, 0.5 * step);
    testkit::write_file(file, folder / ("other_" + std::to_string(step) + ".fld"));
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    if (argc != 2) throw std::runtime_error("usage: odd_datasets FOLDER");
    const fs::path folder = argv[1];
    fs::create_directories(folder);
    write_empty_parts(folder);
    write_one_node(folder);
    write_no_regions(folder);
    write_japanese(folder);
    write_other_meshes(folder);
  } catch (const std::exception& error) {
    std::cerr << "odd_datasets: " << error.what() << '\n';
    return 1;
  }
}
