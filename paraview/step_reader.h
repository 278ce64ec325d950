// Reads the chosen parts and variables of a step and distributes them as shares. Only on rank 0.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/session.h"
#include "paraview/dataset_info.h"
#include "paraview/exchange.h"
#include "paraview/share.h"

namespace paraview {

// The parts and variables that are enabled.
struct Choice {
  std::function<bool(const PartInfo&)> has_part;
  std::function<bool(const VariableInfo&)> has_variable;
};

class StepReader {
 public:
  // Both must outlive the reader.
  StepReader(host::Session& session, const DatasetInfo& info) : session_(session), info_(info) {}

  // Receives the progress from 0 to 1; returning false stops reading.
  using Progress = std::function<bool(double)>;

  // Updates the shares to the step and the choice; reads only what is missing or has changed. What cannot be
  // read is reported in problems(), and the rest is read. Throws host::Error if the step cannot be selected
  // or the session is lost.
  //
  // The transfer through `outlet` has ended when this returns or throws.
  Ending read(int step, const Choice& choice, Outlet& outlet, const Progress& progress);

  const std::vector<std::string>& problems() const { return problems_; }

 private:
  // What was delivered of a part.
  struct Delivered {
    std::size_t cells_print = 0;
    std::size_t points_print = 0;
    int geometry_step = -1;
    vtkIdType cell_count = 0;
    std::map<int, std::vector<int>> nodes;  // per wanted share, if there are several
    std::set<int> variables;                // with values of the current step
  };

  Ending deliver(int step, const Choice& choice, Outlet& outlet, const Progress& progress);
  StepPlan make_plan(int step, const Choice& choice);
  // Whether the delivered mesh of the part is that of the session's step.
  bool has_current_mesh(int part) const;
  void discard(int part, Outlet& outlet);
  // Discards parts of the plan whose delivered mesh belongs to another step.
  void discard_other_meshes(const StepPlan& plan, Outlet& outlet);
  void deliver_mesh(int part, Outlet& outlet);
  void deliver_cells(int part, std::vector<host::ElementBlock> blocks, Delivered& delivered, Outlet& outlet);
  void deliver_values(int part, const VariableInfo& variable, Outlet& outlet);
  // Returns whether it succeeded.
  bool try_to_read(const std::string& what, const std::function<void()>& reading);

  host::Session& session_;
  const DatasetInfo& info_;
  int step_ = -1;        // of the delivered values
  int share_count_ = 0;  // the shares for which everything was delivered
  int first_share_ = 0;
  std::map<int, Delivered> delivered_;
  std::vector<std::string> problems_;
};

}  // namespace paraview
