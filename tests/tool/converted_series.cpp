#include "tests/tool/converted_series.h"

#include <fstream>
#include <iterator>
#include <regex>
#include <vtkCompositeDataSet.h>
#include <vtkInformation.h>

#include "host/display_names.h"
#include "testkit/file_writer.h"
#include "tests/tool/run_fldtool.h"
#include "tests/vtk/expected_part.h"

namespace tool_test {

namespace fs = std::filesystem;

namespace {

std::string text_of(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

std::vector<CollectionStep> steps_of(const fs::path& collection) {
  const std::string text = text_of(collection);
  const std::regex entry("timestep=\"([^\"]*)\" part=\"0\" file=\"([^\"]*)\"");
  std::vector<CollectionStep> steps;
  for (std::sregex_iterator found(text.begin(), text.end(), entry), end; found != end; ++found)
    steps.push_back({(*found)[1], collection.parent_path() / (*found)[2].str()});
  return steps;
}

Composite::Composite(const fs::path& file) {
  reader_->SetFileName(file.c_str());
  reader_->Update();
  add(vtkMultiBlockDataSet::SafeDownCast(reader_->GetOutput()), "");
}

void Composite::add(vtkMultiBlockDataSet* blocks, const std::string& place) {
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

fs::path convert(const std::string& file, const fs::path& collection, const Names& options) {
  Names arguments = {"convert", file, collection.string()};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const Result result = run_fldtool(arguments);
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output, collection.string() + "\n");
  return collection;
}

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

std::set<std::string> files_in(const fs::path& folder) {
  std::set<std::string> files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
    files.insert(fs::relative(entry.path(), folder).string());
  return files;
}

Composite ConvertTest::first_step(const Names& options) const {
  return Composite(steps_of(convert(dataset.path(), collection, options)).front().file);
}

void ConvertTest::expect_error(const Names& arguments, int status, const std::string& line) {
  const Result result = run_fldtool(arguments);
  EXPECT_EQ(result.status, status) << line;
  EXPECT_EQ(result.errors, "fldtool: " + line + "\n");
  EXPECT_EQ(result.output, "");
}

std::string ConvertTest::write_series(int steps) const {
  testkit::File file = one_of_each_file();
  for (int step = 0; step < steps; ++step) {
    file.header.set_cycle(step, step);
    testkit::write_file(file, dataset.directory() / ("s_" + std::to_string(step) + ".fld"));
  }
  return (dataset.directory() / "s_0.fld").string();
}

}  // namespace tool_test
