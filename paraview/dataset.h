// An open dataset, on rank 0: its names and times, and where everything stands that shows a step of it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/dataset.h"
#include "host/diagnostics_capture.h"
#include "layout/series.h"
#include "paraview/step_plan.h"

namespace paraview {

struct ReadingOptions {
  bool simplify = false;    // look for the variables in the first file of a series only
  bool group_parts = true;  // put surfaces into the groups that their names tell of

  bool operator==(const ReadingOptions&) const = default;
};

// What is switched on.
struct Choice {
  std::function<bool(const PartInfo&)> has_part;
  std::function<bool(const VariableInfo&)> has_variable;
};

class Dataset {
 public:
  // Opens the dataset that the file belongs to. Throws std::runtime_error.
  Dataset(const std::string& file, const ReadingOptions& options);

  const DatasetInfo& info() const { return info_; }
  // Files of the series that are left out, with the reason of each.
  const std::vector<layout::Series::LeftOut>& left_out() const { return series_->left_out(); }

  // Throws std::runtime_error where the step's mesh cannot be located.
  StepPlan plan(int step, const Choice& choice);

 private:
  // Makes a call of the reader's modules, whose messages are not for the screen. A failed assertion is an
  // error.
  void call(const std::function<void()>& work);
  std::vector<host::Part> host_parts(const std::vector<layout::Part>& parts) const;
  std::vector<PartInfo> part_infos(const std::vector<host::Part>& parts) const;
  std::vector<host::PartGroup> groups(const std::vector<host::Part>& parts) const;
  void list_parts();
  void describe_variables();
  void set_times();

  ReadingOptions options_;
  host::DiagnosticsCapture diagnostics_;
  std::optional<layout::Series> series_;
  DatasetInfo info_;
};

}  // namespace paraview
