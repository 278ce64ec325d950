#include "tool/vtk_series.h"

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

// A fresh folder that takes the place of another one when it is complete, and is removed when it never is.
class NewFolder {
 public:
  explicit NewFolder(const fs::path& final_path) : final_(final_path), path_(final_path.string() + ".tmp") {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
    make_folders(path_);
  }
  NewFolder(const NewFolder&) = delete;
  NewFolder& operator=(const NewFolder&) = delete;
  ~NewFolder() {
    std::error_code ignored;
    if (!path_.empty()) fs::remove_all(path_, ignored);
  }

  const fs::path& path() const { return path_; }

  void finish() {
    std::error_code error;
    fs::remove_all(final_, error);
    if (!error) fs::rename(path_, final_, error);
    if (error) fail(final_, error.message());
    path_.clear();
  }

 private:
  fs::path final_;
  fs::path path_;
};

// `name` with everything that a file system or shell could stumble over replaced.
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
      variable_names_(host::variable_names(session)) {
  make_folders(folder_);
}

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
  if (!vtkdata::write_grid(path, grid, options_.compression)) fail(path, "the file is not complete");
}

void VtkSeries::write_step(const std::function<void()>& after_part) {
  part_names_ = host::part_names(session_);
  const std::vector<int> parts = options_.parts.at(session_);
  const std::string name =
      fmt::format("step_{:0{}}", session_.step(), std::to_string(session_.step_count() - 1).size());
  NewFolder folder(folder_ / name);
  for (const int part : parts) {
    write_part(part, folder.path() / file_name_of(part));
    after_part();
  }
  folder.finish();
  replace_file(folder_ / (name + ".vtm"),
               vtkdata::composite_text(
                   host::make_part_tree(session_, parts),
                   [&](int part) { return part_names_[static_cast<std::size_t>(part) - 1]; },
                   [&](int part) { return name + "/" + file_name_of(part); }));
  steps_.push_back({session_.variable_times().times[static_cast<std::size_t>(session_.step())],
                    folder_.filename().string() + "/" + name + ".vtm"});
  replace_file(collection_, vtkdata::collection_text(steps_));
}

}  // namespace tool
