// `fldtool convert`: what VTK's own reader finds in the files is what the reader plug-in gives.
#include "gtest/gtest.h"
#include <algorithm>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>
#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkFieldData.h>
#include <vtkInformation.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkStringArray.h>
#include <vtkXMLMultiBlockDataReader.h>

#include "host/display_names.h"
#include "samples/samples.h"
#include "samples/tank.h"
#include "testkit/file_writer.h"
#include "testkit/motion.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "tests/host/open_file.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"
#include "tests/vtk/expected_part.h"

namespace {

namespace fs = std::filesystem;
using tool_test::Result;
using tool_test::run_fldtool;
using Names = std::vector<std::string>;

std::string text_of(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

struct CollectionStep {
  std::string time;
  fs::path file;
};

// The steps that a .pvd file lists.
std::vector<CollectionStep> steps_of(const fs::path& collection) {
  const std::string text = text_of(collection);
  const std::regex entry("timestep=\"([^\"]*)\" part=\"0\" file=\"([^\"]*)\"");
  std::vector<CollectionStep> steps;
  for (std::sregex_iterator found(text.begin(), text.end(), entry), end; found != end; ++found)
    steps.push_back({(*found)[1], collection.parent_path() / (*found)[2].str()});
  return steps;
}

// The composite dataset of a step, and its parts with their places: "Surfaces/wall".
class Composite {
 public:
  explicit Composite(const fs::path& file) {
    reader_->SetFileName(file.c_str());
    reader_->Update();
    add(vtkMultiBlockDataSet::SafeDownCast(reader_->GetOutput()), "");
  }

  const Names& places() const { return places_; }
  vtkUnstructuredGrid* part(const std::string& name) const { return parts_.at(name); }
  std::size_t size() const { return parts_.size(); }

 private:
  void add(vtkMultiBlockDataSet* blocks, const std::string& place) {
    ASSERT_NE(blocks, nullptr);
    for (unsigned i = 0; i < blocks->GetNumberOfBlocks(); ++i) {
      const std::string name = blocks->GetMetaData(i)->Get(vtkCompositeDataSet::NAME());
      if (auto* inner = vtkMultiBlockDataSet::SafeDownCast(blocks->GetBlock(i))) {
        add(inner, place + name + "/");
        continue;
      }
      places_.push_back(place + name);
      parts_[name] = vtkUnstructuredGrid::SafeDownCast(blocks->GetBlock(i));
      ASSERT_NE(parts_[name], nullptr) << name;
    }
  }

  vtkNew<vtkXMLMultiBlockDataReader> reader_;
  Names places_;
  std::map<std::string, vtkUnstructuredGrid*> parts_;
};

// Converts and expects it to work without a word but the .pvd file's name.
fs::path convert(const std::string& file, const fs::path& collection, const Names& options = {}) {
  Names arguments = {"convert", file, collection.string()};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const Result result = run_fldtool(arguments);
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output, collection.string() + "\n");
  return collection;
}

// Every step that the collection lists can be read and is as the plug-in gives it.
void expect_steps(const fs::path& collection, host::Session& session, const std::vector<int>& numbers) {
  const std::vector<CollectionStep> steps = steps_of(collection);
  ASSERT_EQ(steps.size(), numbers.size());
  for (std::size_t i = 0; i < steps.size(); ++i) {
    SCOPED_TRACE(steps[i].file);
    session.select_step(numbers[i]);
    EXPECT_EQ(std::stof(steps[i].time), session.variable_times().times[static_cast<std::size_t>(numbers[i])]);
    const Composite composite(steps[i].file);
    const Names names = host::part_names(session);
    ASSERT_EQ(composite.size(), names.size());
    for (const host::Part& part : session.parts()) {
      SCOPED_TRACE(part.name);
      vtk_test::expect_part(composite.part(names[static_cast<std::size_t>(part.number) - 1]), session, part);
    }
  }
}

class ConvertedSample : public testing::TestWithParam<int> {};

TEST_P(ConvertedSample, ReadsBackAsThePluginGivesIt) {
  const testkit::TemporaryDirectory directory;
  const samples::SampleInfo sample =
      samples::write_samples(directory.path())[static_cast<std::size_t>(GetParam())];
  const fs::path collection = convert(sample.file.string(), directory / "out/case.pvd", {"--parts", "all"});
  host_test::Reader reader;
  reader.session().open(sample.file);
  std::vector<int> steps;
  for (int step = 0; step < reader.session().step_count(); ++step) steps.push_back(step);
  expect_steps(collection, reader.session(), steps);
}

INSTANTIATE_TEST_SUITE_P(Samples, ConvertedSample, testing::Range(0, 4));

// Files and folders below a folder, relative to it.
std::set<std::string> files_in(const fs::path& folder) {
  std::set<std::string> files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
    files.insert(fs::relative(entry.path(), folder).string());
  return files;
}

class Convert : public testing::Test {
 protected:
  Convert() : dataset(tool_test::one_of_each_file()), collection(dataset.directory() / "out.pvd") {}

  Composite first_step(const Names& options = {}) const {
    return Composite(steps_of(convert(dataset.path(), collection, options)).front().file);
  }

  void expect_error(const Names& arguments, int status, const std::string& line) const {
    const Result result = run_fldtool(arguments);
    EXPECT_EQ(result.status, status) << line;
    EXPECT_EQ(result.errors, "fldtool: " + line + "\n");
    EXPECT_EQ(result.output, "");
  }

  // A series of `steps` files with the geometry in each; its first file.
  std::string write_series(int steps) const {
    testkit::File file = tool_test::one_of_each_file();
    for (int step = 0; step < steps; ++step) {
      file.header.set_cycle(step, step);
      testkit::write_file(file, dataset.directory() / ("s_" + std::to_string(step) + ".fld"));
    }
    return (dataset.directory() / "s_0.fld").string();
  }

  tool_test::OneFile dataset;
  fs::path collection;
};

TEST_F(Convert, KeepsGroupsAndNames) {
  EXPECT_EQ(first_step().places(),
            (Names{"Surfaces/外", "Surfaces/Undefined_Regions/@between", "Volumes/lower", "Volumes/upper"}));
}

TEST_F(Convert, KeepsLabelsUnitsAndTimes) {
  const Composite composite = first_step();
  vtkFieldData* fields = composite.part("外")->GetFieldData();
  auto* labels = vtkStringArray::SafeDownCast(fields->GetAbstractArray("Labels"));
  ASSERT_NE(labels, nullptr);
  ASSERT_EQ(labels->GetNumberOfValues(), 2);
  EXPECT_EQ(labels->GetValue(0), "p: 圧力");
  EXPECT_EQ(labels->GetValue(1), "v: Position");
  ASSERT_NE(fields->GetArray("TimeValue"), nullptr);
}

TEST_F(Convert, ChoosesPartsAndVariables) {
  const Composite composite = first_step({"--parts", "lower,whole,@bet*", "--variables", "v"});
  EXPECT_EQ(composite.places(),
            (Names{"Surfaces/Undefined_Regions/@between", "Volumes/lower", "Whole mesh/ALL_ELEMENTS"}));
  EXPECT_EQ(composite.part("lower")->GetPointData()->GetNumberOfArrays(), 1);
  EXPECT_NE(composite.part("lower")->GetPointData()->GetArray("v"), nullptr);
  EXPECT_EQ(composite.part("lower")->GetCellData()->GetNumberOfArrays(), 0);
}

TEST_F(Convert, TakesOptionsInFrontOfTheFile) {
  for (const auto& [option, list] :
       {std::pair("--steps", "0"), std::pair("--parts", "lower"), std::pair("--variables", "p")}) {
    fs::remove(collection);
    const Result result = run_fldtool({"convert", option, list, dataset.path(), collection.string()});
    EXPECT_EQ(result.status, 0) << option;
    EXPECT_EQ(result.errors, "") << option;
    EXPECT_TRUE(fs::exists(collection)) << option;
  }
}

TEST_F(Convert, ChoosesSteps) {
  const std::string file = write_series(5);
  const std::vector<CollectionStep> steps = steps_of(convert(file, collection, {"--steps", "3-4,1"}));
  ASSERT_EQ(steps.size(), 3U);
  EXPECT_EQ(steps[0].time, "1");
  EXPECT_EQ(steps[1].time, "3");
  EXPECT_EQ(steps[2].time, "4");
}

TEST_F(Convert, LeavesAPartOutWhereAStepLacksIt) {
  const std::string file = tool_test::write_series_that_loses_a_part(dataset.directory().path());
  const Result result = run_fldtool({"convert", file, collection.string(), "--parts", "lower,upper"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "fldtool: " + file + ": step 1 does not have: volume lower\n");
  EXPECT_EQ(Composite(steps_of(collection)[0].file).places(), (Names{"Volumes/lower", "Volumes/upper"}));
  EXPECT_EQ(Composite(steps_of(collection)[1].file).places(), Names{"Volumes/upper"});
  EXPECT_TRUE(fs::exists(dataset.directory() / "out/step_1/part_3_upper.vtu"));

  EXPECT_EQ(run_fldtool({"convert", file, collection.string(), "--parts", "lower"}).status, 0);
  EXPECT_EQ(Composite(steps_of(collection)[1].file).places(), Names{});
  EXPECT_FALSE(fs::exists(dataset.directory() / "out/step_1"));
}

TEST_F(Convert, CompressesWithoutLoss) {
  host_test::Reader reader;
  reader.session().open(dataset.path());
  for (const char* method : {"lz4", "zlib"}) {
    convert(dataset.path(), collection, {"--parts", "all", "--compress", method});
    expect_steps(collection, reader.session(), {0});
  }
}

TEST_F(Convert, WritesDoublePrecision) {
  const Composite composite = first_step({"--precision", "double"});
  EXPECT_EQ(composite.part("lower")->GetPoints()->GetDataType(), VTK_DOUBLE);
  EXPECT_EQ(composite.part("lower")->GetPointData()->GetArray("p")->GetDataType(), VTK_DOUBLE);
  EXPECT_EQ(first_step({"--precision", "single"}).part("lower")->GetPoints()->GetDataType(), VTK_FLOAT);
}

TEST_F(Convert, NamesTheCollectionLikeTheFileInAFolder) {
  const std::string folder = (dataset.directory() / "some/where").string();
  const Result result = run_fldtool({"convert", dataset.path(), folder});
  EXPECT_EQ(result.output, folder + "/case.pvd\n");
  EXPECT_EQ(steps_of(folder + "/case.pvd").size(), 1U);
}

TEST_F(Convert, HoldsMotionAndOddParts) {
  testkit::Mesh mesh = testkit::one_of_each();
  mesh.surfaces.push_back({.name = "nothing"});
  mesh.surfaces.push_back({.name = "../up/down: *\n"});
  mesh.surfaces.back().add(mesh.surfaces.front());
  testkit::File file = testkit::file_of(mesh);
  file.header.set_cycle(0, 0.0);
  testkit::write_file(file, dataset.directory() / "m_0.fld");
  testkit::File moved;
  moved.header.set_cycle(1, 0.5);
  moved.add_region_set().add(testkit::motion_section(
      {.base_cycle = 0,
       .regions = {{.names = {"upper"}, .actions = {testkit::Action::translate({0.0, 0.0, 3.0})}}}}));
  testkit::write_file(moved, dataset.directory() / "m_1.fld");
  const std::string path = (dataset.directory() / "m_0.fld").string();
  convert(path, collection, {"--parts", "all"});
  host_test::Reader reader;
  reader.session().open(path);
  expect_steps(collection, reader.session(), {0, 1});
  EXPECT_EQ(Composite(steps_of(collection)[1].file).part("nothing")->GetNumberOfPoints(), 0);
}

TEST_F(Convert, HoldsAQuantityThatAStepLacks) {
  const std::string file = write_series(2);
  testkit::File without = tool_test::one_of_each_file();
  without.header.set_cycle(1, 1.0);
  without.region_sets.front().remove("LS_Scalar:p");
  testkit::write_file(without, dataset.directory() / "s_1.fld");
  convert(file, collection, {"--parts", "all"});
  host_test::Reader reader;
  reader.session().open(file);
  expect_steps(collection, reader.session(), {0, 1});
}

TEST_F(Convert, ReplacesWhatWasThere) {
  const std::string file = write_series(3);
  convert(file, collection);
  convert(file, collection, {"--steps", "1", "--parts", "lower"});
  ASSERT_EQ(steps_of(collection).size(), 1U);
  EXPECT_EQ(Composite(steps_of(collection)[0].file).places(), Names{"Volumes/lower"});
  EXPECT_EQ(files_in(dataset.directory() / "out"),
            (std::set<std::string>{".fldtool-files", "step_1", "step_1.vtm", "step_1/part_3_lower.vtu"}));
}

TEST_F(Convert, LeavesWhatItDidNotWrite) {
  const std::string file = write_series(3);
  const fs::path out = dataset.directory() / "out";
  fs::create_directories(out / "step_9");
  std::ofstream(out / "step_9/part_1_mine.vtu") << "mine";
  fs::create_directories(out / "step_1.tmp");
  std::ofstream(collection.string() + ".tmp") << "mine";
  convert(file, collection);
  std::ofstream(out / "step_1/mine.txt") << "mine";
  std::ofstream(out / "step_2/mine.txt") << "mine";
  convert(file, collection, {"--steps", "1", "--parts", "lower"});
  EXPECT_EQ(files_in(out), (std::set<std::string>{".fldtool-files", "step_1", "step_1.tmp", "step_1.vtm",
                                                  "step_1/mine.txt", "step_1/part_3_lower.vtu", "step_2",
                                                  "step_2/mine.txt", "step_9", "step_9/part_1_mine.vtu"}));
  EXPECT_TRUE(fs::exists(collection.string() + ".tmp"));
}

// A list that names other files is not believed.
TEST_F(Convert, RemovesOnlyFilesOfSteps) {
  const std::string file = write_series(2);
  const fs::path out = dataset.directory() / "out";
  fs::create_directories(out);
  std::ofstream(out / "keep.txt") << "mine";
  std::ofstream(out / ".fldtool-files") << "keep.txt\n../s_1.fld\nstep_1/../keep.txt\nstep_7.vtm\n";
  std::ofstream(out / "step_7.vtm") << "of an earlier run";
  convert(file, collection);
  EXPECT_TRUE(fs::exists(out / "keep.txt"));
  EXPECT_TRUE(fs::exists(dataset.directory() / "s_1.fld"));
  EXPECT_FALSE(fs::exists(out / "step_7.vtm"));
}

TEST_F(Convert, RejectsOutputsOfAnotherFormat) {
  expect_error({"convert", dataset.path(), "x.vtu"}, 2,
               "x.vtu: cannot write '.vtu' files: OUT is NAME.pvd, or a folder (NAME/)");
  expect_error({"convert", dataset.path(), ""}, 2,
               "OUT: the file name is empty (see fldtool convert --help)");
  EXPECT_FALSE(fs::exists("x.vtu"));
  const fs::path folder = dataset.directory() / "run.1";
  const Result result = run_fldtool({"convert", dataset.path(), folder.string()});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_TRUE(fs::exists(folder / "case.pvd"));
}

TEST_F(Convert, RejectsWrongChoices) {
  const std::string file = dataset.path();
  const std::string out = collection.string();
  expect_error({"convert", file}, 2, "OUT is required (see fldtool convert --help)");
  expect_error({"convert", file, out, "--steps", "1"}, 2,
               file + ": there is no step 1: the steps are 0 to 0");
  expect_error({"convert", file, out, "--steps", "1-"}, 2,
               file + ": there are no steps '1-': the steps are 0 to 0");
  expect_error({"convert", file, out, "--parts", "7"}, 2,
               file + ": there is no part '7': the parts are 1 to 5");
  expect_error({"convert", file, out, "--parts", "x*"}, 2,
               file + ": there is no part 'x*': the parts are 1 to 5");
  expect_error({"convert", file, out, "--variables", "q"}, 2,
               file + ": there is no variable 'q': the variables are 1 to 3");
  expect_error({"convert", file, out, "--precision", "half"}, 2,
               "--precision: 'half' is none of double, single (see fldtool convert --help)");
  expect_error({"convert", file, out, "--compress", "bz2"}, 2,
               "--compress: 'bz2' is none of lz4, zlib (see fldtool convert --help)");
  EXPECT_FALSE(fs::exists(collection));
}

TEST_F(Convert, SaysWhenItCannotWrite) {
  const std::string file = dataset.path();
  expect_error({"convert", file, file + "/out"}, 4, file + "/out/case: cannot write: Not a directory");
  fs::create_directories(collection / "occupied");
  expect_error({"convert", file, collection.string()}, 4,
               collection.string() + ": cannot write: Is a directory");
  const fs::path data = dataset.directory() / "data";
  fs::create_directories(data);
  fs::create_directories(data / "step_0.vtm/occupied");
  expect_error({"convert", file, data.string() + ".pvd"}, 4,
               (data / "step_0.vtm").string() + ": cannot write: Is a directory");
}

TEST_F(Convert, SaysWhenAFileIsFull) {
  // The child's files may not grow beyond a few bytes, and no signal tells it.
  const std::string command = "trap '' XFSZ; ulimit -f 0; exec " FLDTOOL " convert " + dataset.path() + " " +
                              collection.string() + " 2>&1 | cat";
  std::FILE* pipe = popen(command.c_str(), "r");
  ASSERT_NE(pipe, nullptr);
  char text[1000] = {};
  const std::size_t size = fread(text, 1, sizeof text - 1, pipe);
  pclose(pipe);
  const std::string said(text, size);
  EXPECT_TRUE(said.starts_with("fldtool: " + (dataset.directory() / "out/step_0/part_1_").string())) << said;
  EXPECT_TRUE(said.ends_with(": cannot write: the file is not complete\n")) << said;
  EXPECT_FALSE(fs::exists(collection));
}

TEST_F(Convert, TellsProgressOnATerminal) {
  const Result result = tool_test::run_fldtool_on_terminal({"convert", dataset.path(), collection.string()});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, collection.string() + "\n");
  // Two surfaces and two volumes of one step.
  EXPECT_EQ(result.errors.find("\r\x1b[Kparts: 0 of 4, 0 %"), 0U) << result.errors;
  EXPECT_TRUE(result.errors.ends_with("\r\x1b[K")) << result.errors;
}

TEST_F(Convert, SaysWhenItCannotTellTheName) {
  const Result result = run_fldtool({"convert", dataset.path(), collection.string()}, "/dev/full");
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.errors, "fldtool: standard output: cannot write: No space left on device\n");
  EXPECT_TRUE(fs::exists(collection));
}

TEST_F(Convert, RefusesWhatIsNoDataset) {
  const std::string empty = (dataset.directory() / "empty.fld").string();
  std::ofstream(empty).flush();
  expect_error({"convert", empty, collection.string()}, 3, empty + ": This is not FLD file.");
  EXPECT_FALSE(fs::exists(collection));
}

TEST_F(Convert, KeepsTheStepsBeforeABrokenOne) {
  // A quantity of the third file announces more values than it has.
  const std::string file = write_series(4);
  testkit::File broken = tool_test::one_of_each_file();
  broken.header.set_cycle(2, 2.0);
  broken.region_sets.front().section("LS_Scalar:p").blocks[1] = testkit::Block::integer(-5);
  testkit::write_file(broken, dataset.directory() / "s_2.fld");
  const Result result = run_fldtool({"convert", file, collection.string(), "--parts", "all"});
  EXPECT_EQ(result.status, 3);
  EXPECT_TRUE(result.errors.starts_with("fldtool: " + (dataset.directory() / "s_2.fld").string() + ": "))
      << result.errors;
  EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
  host_test::Reader reader;
  reader.session().open(file);
  expect_steps(collection, reader.session(), {0, 1});
  EXPECT_EQ(files_in(dataset.directory() / "out").count("step_2"), 0U);
}

// Without the whole mesh.
constexpr std::size_t kTankParts = 19;

class InterruptedConvert : public testing::TestWithParam<int> {};

TEST_P(InterruptedConvert, LeavesTheStepsDone) {
  const testkit::TemporaryDirectory directory;
  const samples::SampleInfo sample = samples::tank::write(directory.path());
  const fs::path collection = directory / "out.pvd";
  std::string program = FLDTOOL;
  std::string command = "convert";
  std::string from = sample.file.string();
  std::string to = collection.string();
  char* arguments[] = {program.data(), command.data(), from.data(), to.data(), nullptr};
  posix_spawn_file_actions_t quiet;
  posix_spawn_file_actions_init(&quiet);
  posix_spawn_file_actions_addopen(&quiet, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  ASSERT_EQ(posix_spawn(&child, program.c_str(), &quiet, nullptr, arguments, environ), 0);
  posix_spawn_file_actions_destroy(&quiet);
  int status = 0;
  while (!fs::exists(collection) && waitpid(child, &status, WNOHANG) == 0)
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  kill(child, GetParam());
  ASSERT_EQ(waitpid(child, &status, 0), child);
  if (GetParam() == SIGKILL) {
    EXPECT_TRUE(WIFSIGNALED(status));
  } else {
    EXPECT_EQ(WEXITSTATUS(status), 130);
    for (const fs::directory_entry& entry : fs::directory_iterator(directory / "out"))
      EXPECT_FALSE(entry.path().filename().string().starts_with(".step")) << entry.path();
  }
  const std::vector<CollectionStep> steps = steps_of(collection);
  EXPECT_GE(steps.size(), 1U);
  EXPECT_LT(steps.size(), 8U);
  for (const CollectionStep& step : steps) EXPECT_EQ(Composite(step.file).size(), kTankParts);
}

INSTANTIATE_TEST_SUITE_P(Signals, InterruptedConvert, testing::Values(SIGINT, SIGTERM, SIGKILL));

}  // namespace
