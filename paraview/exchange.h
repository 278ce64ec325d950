// Transfers shares from rank 0, which reads, to the other ranks.
//
// Rank 0 passes the shares of all ranks to an Outlet, which stores its own and sends the others; every other
// rank calls follow_transfer(). A transfer begins with a plan and ends with an Ending.
#pragma once

#include <vtkMultiProcessController.h>
#include <vtkMultiProcessStream.h>

#include "paraview/share.h"
#include "paraview/share_store.h"

namespace paraview {

// How a transfer ended; the same on all ranks.
enum class Ending { complete, stopped, failed };

class Outlet {
 public:
  // Shares for all ranks of the controller. Without other ranks there are `pieces` shares, of which only
  // number `piece` is wanted.
  Outlet(ShareStore& own, vtkMultiProcessController* controller, int piece, int pieces);

  int share_count() const { return share_count_; }
  // The wanted shares are first_share() to last_share() - 1.
  int first_share() const { return ranks_ > 1 ? 0 : own_share_; }
  int last_share() const { return ranks_ > 1 ? ranks_ : own_share_ + 1; }

  void plan(const StepPlan& plan);
  void cells(int share, int part, const vtkdata::Cells& cells);
  void points(int share, int part, const vtkSmartPointer<vtkPoints>& points);
  // Floats. Null if the step does not have the variable.
  void values(int share, int part, int variable, const vtkSmartPointer<vtkDataArray>& values);
  // Removes the part on all ranks.
  void discard(int part);
  void end(Ending ending);

 private:
  bool is_own(int share) const { return share == own_share_; }

  ShareStore& own_;
  vtkMultiProcessController* controller_;
  int ranks_ = 1;
  int own_share_ = 0;
  int share_count_ = 1;
};

// Receives a transfer on a rank other than 0. `info` names the variables.
Ending follow_transfer(vtkMultiProcessController* controller, ShareStore& store, const DatasetInfo& info);

// Sends the stream of rank 0 to all ranks, if there are several.
void broadcast(vtkMultiProcessController* controller, vtkMultiProcessStream& stream);

// Sets the variable's name and unit on an array.
void set_identity(vtkDataArray* values, const VariableInfo& variable);

}  // namespace paraview
