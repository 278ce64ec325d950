// What is said about a dataset that cannot be read: the file that it is about, and the step in a series.
#pragma once

#include <string>

#include "host/error.h"
#include "host/session.h"
#include "tool/exit_status.h"
#include "tool/problems.h"

namespace tool {

// What could not be read.
struct ReadProblem {
  std::string file;
  std::string reason;  // "step 4: variable p: why"

  std::string text() const { return file + ": " + reason; }

  friend bool operator==(const ReadProblem&, const ReadProblem&) = default;
};

// The file is the one that the error is about or else that of the step, named in the way in which the dataset
// was given; there is a step only in a series of several. `what` may be empty.
ReadProblem read_problem(const host::Error& error, const host::Session& session,
                         const std::string& what = "");
// The same for values of the session's step whose availability is `failed`.
ReadProblem read_problem(const host::PartValues& values, const host::Session& session,
                         const std::string& what);

// Whether the step could be selected; if not, why is a problem.
bool select_step(host::Session& session, int step, Problems& problems);

// The error that ends a command (ExitStatus::unreadable).
CommandError read_error(const host::Error& error, const host::Session& session);
// `file`, a path in the folder of `dataset`, in the way in which that is given; `dataset` if it is empty.
std::string shown_path(const std::string& file, const std::string& dataset);

}  // namespace tool
