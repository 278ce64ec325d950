// Finds out when a reader's cached quantity has to be dropped.
//
// A reader may keep the quantity that it read last under the quantity's name alone, so that the same name
// asked for on a part of another region set would get the first set's values. This class remembers what was
// asked for since the cache was last empty.
#pragma once

#include <map>
#include <optional>

namespace host {

class QuantityRequests {
 public:
  // Whether the cache has to be dropped before `variable` is asked for on `part`, whose region set may not be
  // known: the same variable was asked for before, and not surely in the same region set.
  bool needs_drop(int variable, int part, std::optional<int> region_set) const;

  // Notes a request that is about to be made.
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
