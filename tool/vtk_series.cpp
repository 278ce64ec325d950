#include "tool/vtk_series.h"

#include <cerrno>
#include <cstdlib>
#include <string_view>
#include <system_error>
#include <utility>
#include <vtkDoubleArray.h>
#include <vtkFieldData.h>
#include <vtkNew.h>
#include <vtkPointData.h>

#include "analysis/box_elements.h"
#include "fmt/format.h"
#include "host/display_names.h"
#include "host/part_tree.h"
#include "nlohmann/json.hpp"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/jobs.h"
#include "tool/replaced_file.h"
#include "vtk/grid_file.h"
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

void add_time(vtkUnstructuredGrid* grid, double time) {
  vtkNew<vtkDoubleArray> value;
  value->SetName("TimeValue");
  value->InsertNextValue(time);
  grid->GetFieldData()->AddArray(value);
}

}  // namespace

vtkSmartPointer<vtkDataArray> at_precision(vtkFloatArray* values, vtkdata::Precision precision) {
  if (precision == vtkdata::Precision::single_width) return values;
  auto wide = vtkSmartPointer<vtkDoubleArray>::New();
  wide->DeepCopy(values);
  return wide;
}

VtkSeries::TemporaryFolder::TemporaryFolder(const fs::path& parent, const std::string& name) {
  std::string pattern = (parent / fmt::format(".{}.XXXXXX", name)).string();
  if (mkdtemp(pattern.data()) == nullptr) fail(parent, std::generic_category().message(errno));
  path_ = pattern;
}

VtkSeries::TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

VtkSeries::VtkSeries(host::Session& session, const fs::path& collection, SeriesOptions options)
    : session_(session),
      collection_(collection),
      folder_(fs::path(collection).replace_extension()),
      options_(std::move(options)),
      derived_(session),
      variable_names_(host::variable_names(session)),
      written_(made(folder_)),
      temporary_(folder_, "steps") {}

std::string VtkSeries::file_name_of(int part) const {
  return fmt::format("part_{}_{}.vtu", part, plain_name(part_names_[static_cast<std::size_t>(part) - 1]));
}

bool VtkSeries::write_part(int part, const fs::path& path) {
  vtkSmartPointer<vtkUnstructuredGrid> grid = vtkdata::make_part_grid(session_, part, options_.precision);
  for (const int variable : options_.quantities.variables) {
    vtkdata::add_values(grid, session_, variable, part,
                        variable_names_[static_cast<std::size_t>(variable) - 1], options_.precision);
  }
  for (const analysis::DerivedVariable& variable : options_.quantities.derived) {
    const vtkSmartPointer<vtkFloatArray> values = derived_.on_part(variable, part);
    if (values) grid->GetPointData()->AddArray(at_precision(values, options_.precision));
  }
  if (options_.more_values) options_.more_values(grid, part);
  if (options_.box) {
    grid = analysis::elements_in_box(grid, options_.box->first, options_.box->second);
    if (grid->GetNumberOfCells() == 0) return false;
  }
  add_time(grid, session_.variable_times().times[static_cast<std::size_t>(session_.step())]);
  grid->GetFieldData()->AddArray(vtkdata::make_labels(session_));
  if (!vtkdata::write_grid(path, grid, options_.compression))
    fail(folder_ / step_name() / file_name_of(part), "the file is not complete");
  return true;
}

std::string VtkSeries::step_name() const {
  return fmt::format("step_{:0{}}", session_.step(), std::to_string(session_.step_count() - 1).size());
}

Json VtkSeries::write_step(const std::function<void()>& after_part) {
  part_names_ = host::part_names(session_);
  std::vector<int> parts;
  const std::string name = step_name();
  make_folders(temporary_.path() / name);
  Json files = Json::array();
  for (const int part : options_.parts.at(session_)) {
    if (write_part(part, temporary_.path() / name / file_name_of(part))) {
      files.push_back(file_name_of(part));
      parts.push_back(part);
    }
    after_part();
  }
  const std::string composite = vtkdata::composite_text(
      host::make_part_tree(session_, parts),
      [&](int part) { return part_names_[static_cast<std::size_t>(part) - 1]; },
      [&](int part) { return name + "/" + file_name_of(part); });
  return {{"name", name},
          {"files", std::move(files)},
          {"composite", as_bytes(composite)},
          {"time", session_.variable_times().times[static_cast<std::size_t>(session_.step())]}};
}

bool VtkSeries::is_empty_so_far() const {
  return options_.box && !has_parts_;
}

void VtkSeries::add_step(const Json& step) {
  has_parts_ = has_parts_ || !step.at("files").empty();
  empty_steps_.push_back(step);
  if (is_empty_so_far()) return;
  for (const Json& waiting : empty_steps_) place_step(waiting);
  empty_steps_.clear();
}

void VtkSeries::place_step(const Json& step) {
  const auto name = step.at("name").get<std::string>();
  const std::string composite = name + ".vtm";
  std::set<std::string> files = {composite};
  for (const Json& file : step.at("files")) files.insert(name + "/" + file.get<std::string>());
  written_.add(files);
  if (files.size() > 1) make_folders(folder_ / name);
  for (const std::string& file : files) {
    if (file == composite) continue;
    std::error_code error;
    fs::rename(temporary_.path() / file, folder_ / file, error);
    if (error) fail(folder_ / file, error.message());
  }
  replace_file(folder_ / composite, text_of(step.at("composite")));
  written_.remove_others(files, name + "/");
  files_.merge(files);
  steps_.push_back({step.at("time").get<float>(), folder_.filename().string() + "/" + composite});
  replace_file(collection_, vtkdata::collection_text(steps_));
}

void VtkSeries::finish() {
  if (is_empty_so_far()) return;
  written_.remove_others(files_, "");
}

}  // namespace tool
