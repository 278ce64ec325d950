// Decides when a reader's cached quantity must be dropped.
//
// A reader may cache the last quantity by its name alone, so a request for the same name on a part of another
// region set would return the values of the first. This class records the requests since the cache was last
// empty.
#pragma once

#include <map>
#include <optional>

namespace host {

class QuantityRequests {
 public:
  // Whether the cache must be dropped before a request for `variable` on `part`, whose region set may be
  // unknown: the variable was requested before, and not certainly in the same region set.
  bool needs_drop(int variable, int part, std::optional<int> region_set) const;

  // Records a request that is about to be made.
  void note(int variable, int part, std::optional<int> region_set);

  // The cache is empty: another step was selected, or a dataset opened.
  void clear() { asked_.clear(); }

 private:
  struct Request {
    int part;
    std::optional<int> region_set;
  };
  std::map<int, Request> asked_;
};

}  // namespace host
