// The lock that every call of a reader is made under.
//
// host/ captures what a reader writes to the standard error stream, and recovers from calls that abort, for
// the whole process: one call at a time. So datasets of different threads wait for each other too.
#pragma once

#include <mutex>

namespace binding {

std::mutex& reader_mutex();

// Holds the lock across a fork, so that the child does not inherit one that is never released.
void keep_lock_over_forks();

}  // namespace binding
