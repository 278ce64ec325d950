// Who a part is at every step. Its number says nothing: it is another one as soon as a step has a part more
// or less before it.
#pragma once

#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "host/session.h"

namespace host {

struct PartIdentity {
  PartKind kind{};
  std::string name{};  // the file's bytes
  int occurrence = 0;  // from 0, among the parts of this kind and name

  friend bool operator<(const PartIdentity& a, const PartIdentity& b) {
    return std::tie(a.kind, a.name, a.occurrence) < std::tie(b.kind, b.name, b.occurrence);
  }
};

// The identities of the session's parts, in the order of their numbers.
std::vector<PartIdentity> part_identities(const Session& session);

// The numbers that they have.
std::map<PartIdentity, int> part_numbers(const Session& session);

}  // namespace host
