#include "python/binding/requests.h"

#include <utility>

namespace binding {

int components_of(Dataset& dataset, int variable) {
  return dataset.with_session(
      [&](host::Session& session) { return session.variable(variable).components(); });
}

std::optional<host::HostArray> ask_values(Dataset& dataset, int step, int part, int variable, int component) {
  return dataset.at_step(step, [&](host::Session& session) -> std::optional<host::HostArray> {
    host::PartValues values = session.values(variable, part, component);
    if (values.availability == host::Availability::failed) {
      host::Error error(values.reason);
      error.locate(values.file, step);
      throw error;
    }
    if (values.availability != host::Availability::given) return std::nullopt;
    return std::move(values.array);
  });
}

}  // namespace binding
