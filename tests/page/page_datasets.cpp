// page_datasets FOLDER: writes the datasets that page_test.mjs shows in a browser.
#include <filesystem>
#include <string>

#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"

namespace {

// Everything that a file names tries to become markup or script.
void write_hostile(const std::filesystem::path& folder) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces.front().name = "<script>window.broken=1</script>";
  mesh.volumes.front().name = "<img src=x onerror=window.broken=1>";
  testkit::File file = testkit::file_of(mesh);
  testkit::RegionSet& set = file.region_sets.front();
  set.add(testkit::scalar_section(
      {.name = "</script><b>\"'&", .label = "<!--<script> [</script>]", .values = {1, 2, 3, 4}}));
  set.add(testkit::vector_section({.name = "line\xe2\x80\xa8"
                                           "end",
                                   .label = "`${window.broken=1}` [\"><b>]",
                                   .x = {1, 2, 3, 4},
                                   .y = {0, 0, 0, 0},
                                   .z = {0, 0, 0, 0}}));
  for (const char* item : {"Application", "Date", "Comments"})
    file.header.set(
        testkit::header_item(item, {testkit::Block::characters("</script><b>" + std::string(item), 32)}));
  testkit::write_file(file, folder / "hostile.fld");
  testkit::write_file(file, folder / "<b>'\"&--><script>.fld");
}

// A mesh in cylindrical coordinates: its whole mesh is shown at radius, angle and height.
void write_cylindrical(const std::filesystem::path& folder) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.coordinate_system = 1;
  testkit::write_file(testkit::file_of(mesh), folder / "cylindrical.fld");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  write_hostile(argv[1]);
  write_cylindrical(argv[1]);
  return 0;
}
