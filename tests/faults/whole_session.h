// A host's whole session over one dataset, whatever is wrong with it: opens it, asks for everything at every
// step in arrays of exactly the promised sizes, and ends it. A call that fails does not keep the later ones
// from being made.
#pragma once

#include <cstdint>
#include <filesystem>
#include <set>
#include <string>
#include <tuple>

#include "host/entry_points.h"
#include "tests/faults/spoken_lines.h"

namespace faults {

// How a call may end, the better ones first.
enum class Outcome {
  kServed,         // success, or "there is nothing of that here"
  kFailed,         // the documented failure result
  kException,      // an FLDException
  kOutOfMemory,    // std::bad_alloc
  kAssertion,      // a failed assertion, where these throw
  kBrokenPromise,  // an answer that no host could use: a result or count outside its range, a node number of
                   // no node
};
inline constexpr int kOutcomes = 6;
const char* name_of(Outcome outcome);

// How a call ended that was not served.
struct CallEnding {
  Outcome outcome;
  std::string detail;  // the entry point, and what the exception says
  std::string lines;   // of a failure result: what the reader wrote meanwhile

  bool operator<(const CallEnding& other) const {
    return std::tie(outcome, detail, lines) < std::tie(other.outcome, other.detail, other.lines);
  }
};

struct Ending {
  Outcome outcome = Outcome::kServed;  // the worst of all calls
  std::string detail{};                // of the first call that ended so
  std::set<CallEnding> unserved{};     // calls that ended alike once
  bool is_open = false;                // whether the opening succeeded
  std::uint64_t digest = 0;            // of all answers, arrays included: the same session has the same

  void note(CallEnding call);
};

struct SessionOptions {
  bool simplify_sequential = false;    // "Simplify reading sequential FLD files"
  bool group_parts = true;             // "Make group of parts"
  bool ends = true;                    // whether USERD_exit_routine ends it
  const SpokenLines* lines = nullptr;  // where the reader's lines are found
};

// Exceptions other than those above leave it, with the session where it was. Of more than 64 steps, parts or
// variables 64 are asked for, evenly.
Ending whole_session(const host::EntryPoints& api, const std::filesystem::path& path,
                     const SessionOptions& options = {});

}  // namespace faults
