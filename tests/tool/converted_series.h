// What `fldtool convert` writes: the series as VTK's own readers find it.
#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLMultiBlockDataReader.h>

#include "host/session.h"
#include "tests/tool/tool_datasets.h"

namespace tool_test {

using Names = std::vector<std::string>;

struct CollectionStep {
  std::string time;
  std::filesystem::path file;
};

// The steps that a .pvd file lists.
std::vector<CollectionStep> steps_of(const std::filesystem::path& collection);

// The composite dataset of a step, and its parts with their places: "Surfaces/wall".
class Composite {
 public:
  explicit Composite(const std::filesystem::path& file);

  const Names& places() const { return places_; }
  vtkUnstructuredGrid* part(const std::string& name) const { return parts_.at(name); }
  std::size_t size() const { return parts_.size(); }

 private:
  void add(vtkMultiBlockDataSet* blocks, const std::string& place);

  vtkNew<vtkXMLMultiBlockDataReader> reader_;
  Names places_;
  std::map<std::string, vtkUnstructuredGrid*> parts_;
};

// Converts and expects it to work without a word but the .pvd file's name.
std::filesystem::path convert(const std::string& file, const std::filesystem::path& collection,
                              const Names& options = {});

// Every step that the collection lists can be read and is as the plug-in gives it.
void expect_steps(const std::filesystem::path& collection, host::Session& session,
                  const std::vector<int>& numbers);

// Files and folders below a folder, relative to it.
std::set<std::string> files_in(const std::filesystem::path& folder);

// one_of_each_file(), to be converted into files beside it.
class ConvertTest : public testing::Test {
 protected:
  ConvertTest() : dataset(one_of_each_file()), collection(dataset.directory() / "out.pvd") {}

  Composite first_step(const Names& options = {}) const;
  static void expect_error(const Names& arguments, int status, const std::string& line);
  // A series of `steps` files with the geometry in each; its first file.
  std::string write_series(int steps) const;

  OneFile dataset;
  std::filesystem::path collection;
};

}  // namespace tool_test
