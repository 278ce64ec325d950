#include "tool/chosen_parts.h"

#include <unistd.h>
#include <utility>

#include "fmt/format.h"
#include "host/text_encoding.h"
#include "tool/best_effort_write.h"
#include "tool/summary.h"

namespace tool {

void ChosenParts::add(const host::Session& session, const std::set<int>& numbers) {
  const std::vector<PartIdentity> identities = part_identities(session);
  for (const int number : numbers) identities_.insert(identities[static_cast<std::size_t>(number) - 1]);
}

void ChosenParts::add(const host::Session& session, const std::set<host::PartKind>& kinds) {
  kinds_.insert(kinds.begin(), kinds.end());
  for (const PartIdentity& identity : part_identities(session)) {
    if (kinds.contains(identity.kind)) identities_.insert(identity);
  }
}

bool ChosenParts::contains(const PartIdentity& identity) const {
  return identities_.contains(identity) || kinds_.contains(identity.kind);
}

std::vector<int> ChosenParts::at(const host::Session& session) const {
  std::vector<int> numbers;
  int number = 0;
  for (const PartIdentity& identity : part_identities(session)) {
    ++number;
    if (contains(identity)) numbers.push_back(number);
  }
  return numbers;
}

void ChosenParts::tell_missing(const host::Session& session, Progress& progress) const {
  const std::map<PartIdentity, int> numbers = part_numbers(session);
  std::string missing;
  for (const PartIdentity& identity : identities_) {
    if (numbers.contains(identity)) continue;
    missing += fmt::format("{}{} {}", missing.empty() ? "" : ", ", kind_word(identity.kind),
                           host::to_utf8(identity.name));
  }
  if (missing.empty()) return;
  progress.erase();
  const std::string line =
      fmt::format("fldtool: {}: step {} does not have: {}", session.path().string(), session.step(), missing);
  write_if_possible(STDERR_FILENO, host::without_controls(line) + "\n");
}

}  // namespace tool
