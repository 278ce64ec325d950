#include "paraview/step_reader.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "host/error.h"
#include "vtk/points.h"
#include "vtk/values.h"

namespace paraview {
namespace {

// Hashes to detect changes without keeping the previous contents.
std::size_t fingerprint(std::size_t seed, const void* data, std::size_t bytes) {
  const std::size_t own = std::hash<std::string_view>{}({static_cast<const char*>(data), bytes});
  return seed * 0x9E3779B97F4A7C15U ^ own;
}

std::size_t fingerprint(const std::vector<host::ElementBlock>& blocks) {
  std::size_t print = 1;
  for (const host::ElementBlock& block : blocks) {
    print = fingerprint(print, &block.shape.slot, sizeof block.shape.slot);
    print = fingerprint(print, block.nodes.data(), block.nodes.size() * sizeof(int));
  }
  return print;
}

std::size_t fingerprint(const host::Coordinates& coordinates) {
  std::size_t print = 1;
  for (const std::span<const float> axis : {coordinates.x(), coordinates.y(), coordinates.z()})
    print = fingerprint(print, axis.data(), axis.size_bytes());
  return print;
}

}  // namespace

Ending StepReader::read(int step, const Choice& choice, Outlet& outlet, const Progress& progress) {
  problems_.clear();
  Ending ending = Ending::failed;
  try {
    ending = deliver(step, choice, outlet, progress);
  } catch (...) {
    // All ranks start from scratch next time.
    delivered_.clear();
    step_ = -1;
    outlet.end(Ending::failed);
    throw;
  }
  outlet.end(ending);
  return ending;
}

Ending StepReader::deliver(int step, const Choice& choice, Outlet& outlet, const Progress& progress) {
  session_.select_step(step);
  if (share_count_ != outlet.share_count() || first_share_ != outlet.first_share()) {
    // Values of other shares cannot be reused either.
    delivered_.clear();
    step_ = -1;
    share_count_ = outlet.share_count();
    first_share_ = outlet.first_share();
  }
  const StepPlan plan = make_plan(step, choice);
  outlet.plan(plan);

  const double items = static_cast<double>(plan.parts.size() * (plan.variables.size() + 1));
  double done = 0;
  for (const PartInfo& part : plan.parts) {
    if (!progress(done++ / items)) {
      discard_other_meshes(plan, outlet);
      return Ending::stopped;
    }
    if (has_current_mesh(part.number)) continue;
    if (try_to_read("part '" + part.name + "'", [&] { deliver_mesh(part.number, outlet); })) continue;
    discard(part.number, outlet);
  }
  // The reader caches the latest variable, so all parts of one variable are read before the next.
  for (const VariableInfo& variable : info_.variables) {
    if (std::find(plan.variables.begin(), plan.variables.end(), variable.number) == plan.variables.end()) {
      continue;
    }
    for (const PartInfo& part : plan.parts) {
      if (!progress(done++ / items)) return Ending::stopped;
      const Delivered& delivered = delivered_[part.number];
      if (delivered.geometry_step < 0 || delivered.variables.contains(variable.number)) continue;
      try_to_read("'" + variable.name + "' on part '" + part.name + "'",
                  [&] { deliver_values(part.number, variable, outlet); });
    }
  }
  return Ending::complete;
}

StepPlan StepReader::make_plan(int step, const Choice& choice) {
  StepPlan plan;
  std::vector<int> numbers;
  for (PartInfo& part : ask_parts(session_)) {
    if (!choice.has_part(part)) continue;
    numbers.push_back(part.number);
    plan.parts.push_back(std::move(part));
  }
  plan.folders = host::make_part_tree(session_, numbers);
  for (const VariableInfo& variable : info_.variables) {
    if (choice.has_variable(variable)) plan.variables.push_back(variable.number);
  }
  plan.is_other_step = step_ != step;
  step_ = step;

  // The stores release the same when they adopt the plan.
  const std::set<int> shown(numbers.begin(), numbers.end());
  std::erase_if(delivered_, [&](const auto& part) { return !shown.contains(part.first); });
  for (auto& [part, delivered] : delivered_) {
    std::erase_if(delivered.variables, [&](int variable) {
      return plan.is_other_step ||
             std::find(plan.variables.begin(), plan.variables.end(), variable) == plan.variables.end();
    });
  }
  return plan;
}

bool StepReader::has_current_mesh(int part) const {
  const auto delivered = delivered_.find(part);
  return delivered != delivered_.end() &&
         delivered->second.geometry_step == session_.geometry_step_of(session_.step());
}

void StepReader::discard(int part, Outlet& outlet) {
  outlet.discard(part);
  delivered_.erase(part);
}

void StepReader::discard_other_meshes(const StepPlan& plan, Outlet& outlet) {
  for (const PartInfo& part : plan.parts) {
    if (!has_current_mesh(part.number)) discard(part.number, outlet);
  }
}

void StepReader::deliver_mesh(int part, Outlet& outlet) {
  Delivered& delivered = delivered_[part];
  const int geometry_step = session_.geometry_step_of(session_.step());
  const bool was_there = delivered.geometry_step >= 0;
  delivered.geometry_step = -1;

  std::vector<host::ElementBlock> blocks = session_.elements(part);
  const std::size_t cells_print = fingerprint(blocks);
  const bool has_new_cells = !was_there || cells_print != delivered.cells_print;
  if (has_new_cells) {
    deliver_cells(part, std::move(blocks), delivered, outlet);
    delivered.cells_print = cells_print;
  }

  const host::Coordinates coordinates = session_.coordinates(part);
  const std::size_t points_print = fingerprint(coordinates);
  if (has_new_cells || points_print != delivered.points_print) {
    const vtkSmartPointer<vtkPoints> points = vtkdata::make_points(coordinates);
    for (int share = outlet.first_share(); share < outlet.last_share(); ++share) {
      outlet.points(share, part, share_count_ == 1 ? points : take_points(points, delivered.nodes[share]));
    }
    delivered.points_print = points_print;
  }
  delivered.geometry_step = geometry_step;
}

void StepReader::deliver_cells(int part, std::vector<host::ElementBlock> blocks, Delivered& delivered,
                               Outlet& outlet) {
  const vtkdata::Cells cells = vtkdata::make_cells(std::move(blocks));
  delivered.cell_count = cells.types->GetNumberOfValues();
  delivered.nodes.clear();
  if (share_count_ == 1) return outlet.cells(outlet.first_share(), part, cells);
  ShareCutter cutter(cells, session_.part(part).nodes);
  for (int share = outlet.first_share(); share < outlet.last_share(); ++share) {
    CellShare cut = cutter.cut(range_of_share(delivered.cell_count, share, share_count_));
    outlet.cells(share, part, cut.cells);
    delivered.nodes[share] = std::move(cut.nodes);
  }
}

void StepReader::deliver_values(int part, const VariableInfo& variable, Outlet& outlet) {
  const vtkSmartPointer<vtkDataArray> whole =
      vtkdata::make_values(session_, variable.number, part, variable.name);
  Delivered& delivered = delivered_[part];
  for (int share = outlet.first_share(); share < outlet.last_share(); ++share) {
    vtkSmartPointer<vtkDataArray> values = whole;
    if (whole && share_count_ > 1) {
      values = variable.is_per_cell
                   ? take_tuples(whole, range_of_share(delivered.cell_count, share, share_count_))
                   : take_tuples(whole, delivered.nodes[share]);
      set_identity(values, variable);
    }
    outlet.values(share, part, variable.number, values);
  }
  delivered.variables.insert(variable.number);
}

bool StepReader::try_to_read(const std::string& what, const std::function<void()>& reading) {
  try {
    reading();
    return true;
  } catch (const host::Error& error) {
    if (session_.is_lost()) throw;
    problems_.push_back("cannot read " + what + ": " + error.text_with_file());
    return false;
  }
}

}  // namespace paraview
