#include "host/part_identity.h"

#include <utility>

namespace host {

std::vector<PartIdentity> part_identities(const Session& session) {
  std::map<std::pair<PartKind, std::string>, int> counts;
  std::vector<PartIdentity> identities;
  for (const Part& part : session.parts())
    identities.push_back({part.kind, part.name, counts[{part.kind, part.name}]++});
  return identities;
}

std::map<PartIdentity, int> part_numbers(const Session& session) {
  std::map<PartIdentity, int> numbers;
  for (const PartIdentity& identity : part_identities(session))
    numbers.emplace(identity, static_cast<int>(numbers.size()) + 1);
  return numbers;
}

}  // namespace host
