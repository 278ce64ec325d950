// A host's whole session over one dataset, valid or not: opens it, requests everything at every step in
// arrays of exactly the announced sizes, and ends it. It continues after a failed call.
#pragma once

#include <cstdint>
#include <filesystem>
#include <set>
#include <string>
#include <tuple>

#include "host/entry_points.h"
#include "tests/faults/spoken_lines.h"

namespace faults {

// The outcome of a call, from best to worst.
enum class Outcome {
  kServed,         // success, or "not available"
  kFailed,         // the documented failure result
  kException,      // an FLDException
  kOutOfMemory,    // std::bad_alloc
  kAssertion,      // a failed assertion, where these throw
  kBrokenPromise,  // an unusable answer: a result, count or node number out of range
};
inline constexpr int kOutcomes = 6;
const char* name_of(Outcome outcome);

// The outcome of a call that was not served.
struct CallEnding {
  Outcome outcome;
  std::string detail;  // the entry point and the exception's text
  std::string lines;   // for a failure result: the reader's messages

  bool operator<(const CallEnding& other) const {
    return std::tie(outcome, detail, lines) < std::tie(other.outcome, other.detail, other.lines);
  }
};

struct Ending {
  Outcome outcome = Outcome::kServed;  // the worst of all calls
  std::string detail{};                // of the first call with this outcome
  std::set<CallEnding> unserved{};     // without duplicates
  bool is_open = false;                // whether the opening succeeded
  std::uint64_t digest = 0;            // of all answers, including arrays

  void note(CallEnding call);
};

struct SessionOptions {
  bool simplify_sequential = false;    // "Simplify reading sequential FLD files"
  bool group_parts = true;             // "Make group of parts"
  bool ends = true;                    // whether USERD_exit_routine ends it
  const SpokenLines* lines = nullptr;  // the reader's messages
};

// Other exceptions propagate. Of more than 64 steps, parts or variables, 64 evenly spaced ones are requested.
Ending whole_session(const host::EntryPoints& api, const std::filesystem::path& path,
                     const SessionOptions& options = {});

}  // namespace faults
