// Returns from a call that ends in a failed assertion.
//
// A reader ends the process through the C library's assertion report when a dataset contradicts itself. A
// host that has more to lose than this dataset makes the call through here: the call ends, the process does
// not. The reader's state and memory stay as they were at that moment, so it must not be called again.
#pragma once

#include <functional>

namespace host {

// Makes the call and returns true, or false when it ended in a failed assertion. Exceptions pass. Needs a
// live DiagnosticsCapture::Scope, in which the report of the assertion is looked for: any other abort
// (std::terminate, heap corruption, a bare abort()) and an abort in another thread end the process as usual.
// One call at a time in a process.
bool runs_without_assertion(const std::function<void()>& call);

}  // namespace host
