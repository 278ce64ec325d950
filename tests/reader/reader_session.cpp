// A whole session as a host goes through it, for a memory checker: everything is asked for in arrays of
// exactly the host's sizes, over a transient dataset with a motion and an overset one, with failing openings
// in between, in one process. Takes the path of the plug-in. The exit status is 0 when all calls answered as
// they should.
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "host/element_slots.h"
#include "host/library.h"
#include "testkit/file_writer.h"
#include "testkit/temporary_directory.h"
#include "tests/reader/small_datasets.h"

namespace {

using reader_test::file_at;
using reader_test::numbered_scalar;
using reader_test::numbered_vector;

class Failure : public std::exception {
 public:
  explicit Failure(std::string what) : what_(std::move(what)) {}
  const char* what() const noexcept override { return what_.c_str(); }

 private:
  std::string what_;
};

void require(bool holds, const char* what) {
  if (!holds) throw Failure(what);
}

// Every row is a block of its own, so that a checker sees each end.
template <class T>
class Rows {
 public:
  Rows(std::size_t count, std::size_t width) {
    for (std::size_t i = 0; i < count; ++i) {
      rows_.push_back(std::make_unique<T[]>(width));
      pointers_.push_back(rows_.back().get());
    }
  }
  T** data() { return pointers_.data(); }
  T* row(std::size_t i) { return pointers_[i]; }

 private:
  std::vector<std::unique_ptr<T[]>> rows_;
  std::vector<T*> pointers_;
};

class Session {
 public:
  explicit Session(const host::EntryPoints& api) : api_(api) {}

  void introduce() {
    std::vector<char> text(255);
    std::vector<char> name(20);
    Rows<char> titles(2, 40);
    int number = 0;
    std::vector<int> defaults(2);
    require(api_.get_name_of_reader(name.data(), &number) == 1, "name");
    require(api_.get_reader_release(name.data()) == 1, "release");
    require(api_.get_reader_version(name.data()) == 1, "version");
    require(api_.get_reader_descrip(text.data()) == 1, "description");
    api_.set_filename_button_labels(text.data(), text.data());
    api_.set_server_number(1, 1);
    int pulldowns = 0;
    int fields = 0;
    api_.get_extra_gui_numbers(&number, &pulldowns, &fields);
    api_.get_extra_gui_defaults(titles.data(), defaults.data(), nullptr, nullptr, nullptr, nullptr, nullptr,
                                nullptr);
    api_.set_extra_gui_data(defaults.data(), nullptr, nullptr);
    int request = 0;
    float undefined = -1.0e20F;
    api_.get_extra_data(&request, nullptr, &number, nullptr, nullptr, nullptr);
    api_.get_extra_data(&request, nullptr, &number, nullptr, nullptr, &undefined);
  }

  int open(const std::filesystem::path& path) {
    std::string name = path.string();
    std::string second;
    std::string directory = path.parent_path().string();
    return api_.set_filenames(name.data(), second.data(), directory.data(), 0);
  }

  // All steps of both sets, and at each of them all parts and all variables.
  void go_through() {
    std::vector<char> text(80);
    for (int set = 1; set <= api_.get_number_of_timesets(); ++set) {
      api_.get_timeset_description(set, text.data());
      const int steps = api_.get_num_of_time_steps(set);
      std::vector<float> times(static_cast<std::size_t>(steps));
      api_.get_sol_times(set, times.data());
    }
    api_.get_changing_geometry_status();
    const int steps = api_.get_num_of_time_steps(2);
    for (int step = 0; step < steps; ++step) {
      api_.set_time_set_and_step(api_.get_geom_timeset_number(), step);
      api_.set_time_set_and_step(2, step);
      take_parts();
      take_variables();
    }
    take_metadata();
  }

  void exit() { api_.exit_routine(); }

 private:
  void take_parts() {
    const auto count = static_cast<std::size_t>(api_.get_number_of_model_parts());
    require(count > 0, "parts");
    std::vector<int> ids(count);
    std::vector<int> types(count);
    nodes_.assign(count, 0);
    Rows<char> descriptions(count, 80);
    counts_ = std::make_unique<Rows<int>>(count, host::kElementSlots);
    Rows<int> dimensions(count, 3);
    Rows<int> blanking(count, 6);
    api_.get_gold_part_build_info(ids.data(), types.data(), descriptions.data(), nodes_.data(),
                                  counts_->data(), dimensions.data(), blanking.data());
    for (std::size_t i = 0; i < count; ++i) {
      const int part = ids[i];
      Rows<float> coordinates(3, static_cast<std::size_t>(nodes_[i]) + 1);
      require(api_.get_part_coords(part, coordinates.data()) == 1, "coordinates");
      for (int slot = 0; slot < host::kElementSlots; ++slot) take_elements(part, slot);
    }
    api_.stop_part_building();
  }

  int count_of(int part, int slot) { return counts_->row(static_cast<std::size_t>(part) - 1)[slot]; }

  void take_elements(int part, int slot) {
    const int elements = count_of(part, slot);
    if (elements == 0) return;
    const int corners = host::shape_of_slot(slot)->nodes;
    Rows<int> rows(static_cast<std::size_t>(elements), static_cast<std::size_t>(corners));
    require(api_.get_part_elements_by_type(part, slot, rows.data()) == 1, "elements");
    const int nodes = nodes_[static_cast<std::size_t>(part) - 1];
    for (int e = 0; e < elements; ++e) {
      for (int j = 0; j < corners; ++j) {
        const int node = rows.row(static_cast<std::size_t>(e))[j];
        require(node >= 1 && node <= nodes, "a node number outside the part");
      }
    }
  }

  void take_variables() {
    const auto count = static_cast<std::size_t>(api_.get_number_of_variables());
    Rows<char> texts(3 * count, 80);
    std::vector<int> types(count);
    std::vector<int> classify(count);
    std::vector<int> rest(3 * count);
    std::vector<float> frequency(count);
    api_.get_gold_variable_info(texts.data(), texts.data() + count, types.data(), classify.data(),
                                rest.data(), texts.data() + 2 * count, frequency.data(), rest.data() + count,
                                rest.data() + 2 * count);
    for (std::size_t i = 0; i < count; ++i) {
      const int variable = static_cast<int>(i) + 1;
      for (int part = 1; part <= static_cast<int>(nodes_.size()); ++part) {
        if (classify[i] == 4) {
          const int nodes = nodes_[static_cast<std::size_t>(part) - 1];
          for (int c = 0; c < (types[i] == 2 ? 3 : 1); ++c)
            take_values(variable, part, types[i], 0, c, nodes);
          continue;
        }
        for (int slot = 0; slot < host::kElementSlots; ++slot) {
          take_values(variable, part, types[i], slot, 0, count_of(part, slot));
        }
      }
    }
  }

  void take_values(int variable, int part, int type, int slot, int component, int count) {
    std::vector<float> values(static_cast<std::size_t>(count) + 1);
    require(api_.get_var_by_component(variable, part, type, slot, 0, component, values.data()) > 0, "values");
    float sum = 0.0F;
    for (const float value : values) sum += value;
    require(sum == sum, "a value that is not a number");
  }

  void take_metadata() {
    int size = 0;
    api_.get_metadata(&size, nullptr);
    std::vector<char> text(static_cast<std::size_t>(size) + 1);
    api_.get_metadata(&size, text.data());
  }

  const host::EntryPoints& api_;
  std::vector<int> nodes_;
  std::unique_ptr<Rows<int>> counts_;
};

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
  Session session(library.entry_points());
  session.exit();
  session.introduce();
  require(session.open(directory / "missing.fld") == -1, "a missing file is opened");
  require(session.open(transient) == 1, "the transient dataset is not opened");
  session.go_through();
  require(session.open(bare) == -1, "a mesh without elements is opened");
  session.go_through();
  require(session.open(overset) == 1, "the overset dataset is not opened");
  session.go_through();
  session.exit();
  session.exit();
  require(session.open(transient) == 1, "the dataset is not opened after the exit");
  session.go_through();
  session.exit();
  require(session.open(overset) == 1, "the dataset is not opened at the end");
  session.go_through();
  // Unloaded as it is: with a dataset open.
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
