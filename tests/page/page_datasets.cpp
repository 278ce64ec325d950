// page_datasets FOLDER: writes the datasets that page_test.mjs shows in a browser.
#include <filesystem>
#include <string>

#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  // Everything that a file names tries to become markup or script.
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces.front().name = "<script>window.broken=1</script>";
  mesh.volumes.front().name = "<img src=x onerror=window.broken=1>";
  testkit::File file = testkit::file_of(mesh);
  file.region_sets.front().add(testkit::scalar_section(
      {.name = "</script><b>\"'&", .label = "</script><script>window.broken=1", .values = {1, 2, 3, 4}}));
  testkit::write_file(file, std::filesystem::path(argv[1]) / "hostile.fld");
  return 0;
}
