// Reads what a step shows and hands it out as shares. Only rank 0 has one.
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

// What is switched on.
struct Choice {
  std::function<bool(const PartInfo&)> has_part;
  std::function<bool(const VariableInfo&)> has_variable;
};

class StepReader {
 public:
  // Both must outlive the reader.
  StepReader(host::Session& session, const DatasetInfo& info) : session_(session), info_(info) {}

  // Told how much is done, from 0 to 1; false stops the reading.
  using Progress = std::function<bool(double)>;

  // Brings the shares to the state of the step and the choice: reads what is not there yet or has changed,
  // nothing else. What cannot be read becomes a line in problems(), and the rest is read all the same. Throws
  // host::Error when the step cannot be selected or the session is lost.
  //
  // The outlet has been ended when this returns or throws.
  Ending read(int step, const Choice& choice, Outlet& outlet, const Progress& progress);

  const std::vector<std::string>& problems() const { return problems_; }

 private:
  // What was handed out of a part.
  struct Delivered {
    std::size_t cells_print = 0;
    std::size_t points_print = 0;
    int geometry_step = -1;
    vtkIdType cell_count = 0;
    std::map<int, std::vector<int>> nodes;  // per wanted share of several
    std::set<int> variables;                // with values of the current step
  };

  Ending deliver(int step, const Choice& choice, Outlet& outlet, const Progress& progress);
  StepPlan make_plan(int step, const Choice& choice);
  // Whether the mesh that was handed out of the part is the one of the session's step.
  bool has_current_mesh(int part) const;
  void discard(int part, Outlet& outlet);
  // Takes back what was handed out of the plan's parts for another step.
  void discard_other_meshes(const StepPlan& plan, Outlet& outlet);
  void deliver_mesh(int part, Outlet& outlet);
  void deliver_cells(int part, std::vector<host::ElementBlock> blocks, Delivered& delivered, Outlet& outlet);
  void deliver_values(int part, const VariableInfo& variable, Outlet& outlet);
  // Whether it went well.
  bool try_to_read(const std::string& what, const std::function<void()>& reading);

  host::Session& session_;
  const DatasetInfo& info_;
  int step_ = -1;        // whose values were handed out
  int share_count_ = 0;  // that everything was handed out for,
  int first_share_ = 0;  // from this share on
  std::map<int, Delivered> delivered_;
  std::vector<std::string> problems_;
};

}  // namespace paraview
