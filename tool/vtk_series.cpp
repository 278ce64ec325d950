#include "tool/vtk_series.h"

#include <cerrno>
#include <cstdlib>
#include <string_view>
#include <system_error>
#include <utility>
#include <vtkDoubleArray.h>
#include <vtkFieldData.h>
#include <vtkNew.h>

#include "fmt/format.h"
#include "host/display_names.h"
#include "host/part_tree.h"
#include "tool/exit_status.h"
#include "tool/replaced_file.h"
#include "vtk/labels.h"
#include "vtk/part_grid.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path& path, const std::string& reason) {
  throw CommandError(ExitStatus::failure, path.string(), "cannot write: " + reason);
}

void make_folders(const fs::path& path) {
  std::error_code error;
  fs::create_directories(path, error);
  if (error) fail(path, error.message());
}

const fs::path& made(const fs::path& folder) {
  make_folders(folder);
  return folder;
}

// A folder for the files of a step while they are written, with a name that nothing else has. What is still
// in it at the end is removed.
class TemporaryFolder {
 public:
  TemporaryFolder(const fs::path& parent, const std::string& name) {
    std::string pattern = (parent / fmt::format(".{}.XXXXXX", name)).string();
    if (mkdtemp(pattern.data()) == nullptr) fail(parent, std::generic_category().message(errno));
    path_ = pattern;
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }

  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

// `name` with an underscore for everything but letters, digits, - and _, and at most 60 characters long.
std::string safe(std::string_view name) {
  constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-";
  constexpr std::size_t kLongest = 60;
  std::string result;
  for (const char character : name.substr(0, kLongest))
    result += kPlain.find(character) == std::string_view::npos ? '_' : character;
  return result;
}

void add_time(vtkUnstructuredGrid* grid, double time) {
  vtkNew<vtkDoubleArray> value;
  value->SetName("TimeValue");
  value->InsertNextValue(time);
  grid->GetFieldData()->AddArray(value);
}

}  // namespace

VtkSeries::VtkSeries(host::Session& session, const fs::path& collection, SeriesOptions options)
    : session_(session),
      collection_(collection),
      folder_(fs::path(collection).replace_extension()),
      options_(std::move(options)),
      variable_names_(host::variable_names(session)),
      written_(made(folder_)) {}

std::string VtkSeries::file_name_of(int part) const {
  return fmt::format("part_{}_{}.vtu", part, safe(part_names_[static_cast<std::size_t>(part) - 1]));
}

void VtkSeries::write_part(int part, const fs::path& path) const {
  const vtkSmartPointer<vtkUnstructuredGrid> grid =
      vtkdata::make_part_grid(session_, part, options_.precision);
  for (const int variable : options_.variables) {
    vtkdata::add_values(grid, session_, variable, part,
                        variable_names_[static_cast<std::size_t>(variable) - 1], options_.precision);
  }
  add_time(grid, session_.variable_times().times[static_cast<std::size_t>(session_.step())]);
  grid->GetFieldData()->AddArray(vtkdata::make_labels(session_));
  if (!vtkdata::write_grid(path, grid, options_.compression))
    fail(folder_ / step_name() / file_name_of(part), "the file is not complete");
}

std::string VtkSeries::step_name() const {
  return fmt::format("step_{:0{}}", session_.step(), std::to_string(session_.step_count() - 1).size());
}

void VtkSeries::write_step(const std::function<void()>& after_part) {
  part_names_ = host::part_names(session_);
  const std::vector<int> parts = options_.parts.at(session_);
  const std::string name = step_name();
  const TemporaryFolder temporary(folder_, name);
  for (const int part : parts) {
    write_part(part, temporary.path() / file_name_of(part));
    after_part();
  }
  publish(name, parts, temporary.path());
  replace_file(folder_ / (name + ".vtm"),
               vtkdata::composite_text(
                   host::make_part_tree(session_, parts),
                   [&](int part) { return part_names_[static_cast<std::size_t>(part) - 1]; },
                   [&](int part) { return name + "/" + file_name_of(part); }));
  steps_.push_back({session_.variable_times().times[static_cast<std::size_t>(session_.step())],
                    folder_.filename().string() + "/" + name + ".vtm"});
  replace_file(collection_, vtkdata::collection_text(steps_));
}

void VtkSeries::publish(const std::string& name, const std::vector<int>& parts, const fs::path& from) {
  std::set<std::string> files;
  for (const int part : parts) files.insert(name + "/" + file_name_of(part));
  files.insert(name + ".vtm");
  written_.add(files);
  if (!parts.empty()) make_folders(folder_ / name);
  for (const int part : parts) {
    const fs::path to = folder_ / name / file_name_of(part);
    std::error_code error;
    fs::rename(from / file_name_of(part), to, error);
    if (error) fail(to, error.message());
  }
  written_.remove_others(files, name + "/");
  files_.merge(files);
}

void VtkSeries::finish() {
  written_.remove_others(files_, "");
}

}  // namespace tool
