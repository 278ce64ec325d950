// Comes back from a call that aborts.
//
// A reader ends the process through abort() where a dataset contradicts itself. A host that has more to lose
// than this dataset calls it through here: the call ends, the process does not. What the reader held stays as
// it was at that moment, memory included, so nothing more may be asked of it.
#pragma once

#include <functional>

namespace host {

// Makes the call and returns true, or false when it aborted. Exceptions pass. Only calls of abort() by this
// thread are caught; another thread's end the process as ever. One call at a time in a process.
bool runs_without_abort(const std::function<void()>& call);

}  // namespace host
