// A whole session as a host goes through it, for a memory checker: over a transient dataset with a motion and
// an overset one, with failing openings in between, in one process. Takes the path of the plug-in. The exit
// status is 0 if all calls answered as they should.
#include <cstdio>
#include <stdexcept>
#include <string>

#include "host/library.h"
#include "testkit/file_writer.h"
#include "testkit/temporary_directory.h"
#include "tests/faults/whole_session.h"
#include "tests/reader/small_datasets.h"

namespace {

using faults::Ending;
using faults::Outcome;
using faults::whole_session;
using reader_test::file_at;
using reader_test::numbered_scalar;
using reader_test::numbered_vector;

void require(bool holds, const std::string& what) {
  if (!holds) throw std::runtime_error(what);
}

// A series of three files: a motion in the second, a larger mesh in the third.
std::filesystem::path write_transient(const testkit::TemporaryDirectory& directory) {
  for (int step = 0; step < 3; ++step) {
    testkit::Mesh mesh = testkit::one_of_each();
    if (step == 2) {
      for (int i = 0; i < 100; ++i) mesh.nodes.add(i, i, i);
      for (int i = 0; i < 90; i += 3) reader_test::add_element(mesh, testkit::kPyramid, 11 + i);
    }
    testkit::File file = file_at(step, 0.5 * step);
    auto& set = file.add_region_set();
    if (step != 1) set.add(testkit::mesh_sections(mesh));
    if (step == 1) {
      set.add(reader_test::motion_of(
          0, {{.names = {"lower"},
               .actions = {testkit::Action::rotate({0.0, 0.0, 0.0}, {0.0, 0.0, 1.0}, 0.5),
                           testkit::Action::scale({0.0, 0.0, 0.0}, {2.0, 2.0, 2.0})}},
              {.names = {"upper", "nobody"},
               .actions = {testkit::Action::translate({1.0, 0.0, 0.0}),
                           testkit::Action::four_points({{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
                                                        {{{1, 0, 0}, {2, 0, 0}, {1, 1, 0}, {1, 0, 1}}})}}}));
    }
    set.add(numbered_scalar("T", 11));
    set.add(numbered_scalar("P", 111, 1.0e30));
    set.add(numbered_vector("U", 11));
    testkit::write_file(file, directory / ("case_" + std::to_string(step) + ".fld"));
  }
  return directory / "case_1.fld";
}

// Two region sets with different meshes, index base 1, cylindrical, double precision, gathered regions, and
// indices out of range.
std::filesystem::path write_overset(const testkit::TemporaryDirectory& directory) {
  testkit::Mesh first = testkit::one_of_each();
  first.nodes.precision = {testkit::Precision::kDouble, testkit::Precision::kSingle,
                           testkit::Precision::kDouble};
  first.coordinate_system = 1;
  testkit::Mesh second = testkit::one_tetrahedron();
  second.surfaces[0].add(testkit::kTriangleFace, {0, 1, 77}, 99);
  second.volumes[0].elements = {0, 55};
  second.materials = {};
  testkit::File file;
  file.header.set_bias(1);
  for (const auto& mesh : {first, second}) {
    auto& set = file.add_region_set();
    set.add(testkit::mesh_sections(
        mesh, {.surface_form = testkit::RegionForm::kArray, .volume_form = testkit::RegionForm::kArray}));
    set.add(numbered_scalar("T", static_cast<int>(mesh.nodes.size())));
    set.add(numbered_vector("U", 3));
  }
  file.split = 5;
  testkit::write_file(file, directory / "overset.fld");
  return directory / "overset.fld";
}

void run(const char* plugin) {
  const testkit::TemporaryDirectory directory;
  const auto transient = write_transient(directory);
  const auto overset = write_overset(directory);
  const auto bare = directory / "bare.fld";
  testkit::write_file(testkit::file_of(reader_test::numbered_nodes(50)), bare);

  const host::Library library(plugin);
  const host::EntryPoints& api = library.entry_points();
  api.exit_routine();
  const auto open = [&api](const std::filesystem::path& path, bool ends) {
    const Ending ending = whole_session(api, path, {.ends = ends});
    require(ending.is_open && ending.outcome == Outcome::kServed, path.string() + ": " + ending.detail);
    return ending.digest;
  };
  // Goes through the dataset that is open.
  const auto fail_to_open = [&api](const std::filesystem::path& path) {
    const Ending ending = whole_session(api, path, {.ends = false});
    require(!ending.is_open && ending.outcome == Outcome::kFailed, path.string() + ": " + ending.detail);
  };
  fail_to_open(directory / "missing.fld");
  const auto first = open(transient, false);
  fail_to_open(bare);
  open(overset, true);
  api.exit_routine();
  // The comparison makes a memory checker report answers that were not initialised.
  require(open(transient, false) == first, "another answer after the exit");
  open(overset, false);
  // The library is unloaded with a dataset open.
}

}  // namespace

int main(int argc, char** argv) {
  try {
    require(argc == 2, "give the path of the plug-in");
    run(argv[1]);
  } catch (const std::exception& error) {
    fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
