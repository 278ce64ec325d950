// Parts that are chosen at one step and found again at others, whose part lists may differ.
//
// A part is identified by its kind and name, and among parts with the same ones by their order. Numbers do
// not identify parts: they shift when a step has more or fewer parts.
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "host/part_identity.h"
#include "host/session.h"
#include "tool/progress.h"

namespace tool {

using host::PartIdentity;

class ChosenParts {
 public:
  ChosenParts() = default;
  // The parts with these numbers at the session's step.
  ChosenParts(const host::Session& session, const std::set<int>& numbers) { add(session, numbers); }

  void add(const host::Session& session, const std::set<int>& numbers);
  // All parts of these kinds, also those that other steps have.
  void add(const host::Session& session, const std::set<host::PartKind>& kinds);

  // How many there are where they were chosen.
  std::size_t size() const { return identities_.size(); }
  bool contains(const PartIdentity& identity) const;

  // The numbers, ascending, of those that the session's step has.
  std::vector<int> at(const host::Session& session) const;

  // Writes one line to the standard error stream that names the parts which the session's step lacks, if
  // there are any.
  void tell_missing(const host::Session& session, Progress& progress) const;

 private:
  std::set<PartIdentity> identities_;
  std::set<host::PartKind> kinds_;
};

}  // namespace tool
