#include "tool/value_table.h"

#include <utility>

#include "fmt/format.h"
#include "host/text_encoding.h"
#include "tool/axes.h"
#include "tool/exit_status.h"
#include "tool/interrupt.h"

namespace tool {
namespace {

// Where a part's elements are: the means of their nodes, in the order of the element blocks.
host::Coordinates element_centres(const host::Coordinates& nodes,
                                  const std::vector<host::ElementBlock>& blocks, std::size_t count) {
  host::Coordinates centres;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    centres.axes[axis] = host::HostArray(count, 0);
    float* next = centres.axes[axis].entries() + 1;
    const std::span<const float> along = nodes.axes[axis].values();
    for (const host::ElementBlock& block : blocks) {
      stop_if_interrupted();
      const auto width = static_cast<std::size_t>(block.shape.nodes);
      for (std::size_t first = 0; first < block.nodes.size(); first += width) {
        double sum = 0;
        for (std::size_t i = 0; i < width; ++i) {
          sum += static_cast<double>(along[static_cast<std::size_t>(block.nodes[first + i]) - 1]);
        }
        *next++ = static_cast<float>(sum / static_cast<double>(width));
      }
    }
  }
  return centres;
}

host::HostArray values_of(host::Session& session, const host::Variable& variable, const host::Part& part,
                          int component) {
  host::PartValues values = session.values(variable.number, part.number, component);
  const std::string file = session.path().string();
  const std::string name = host::to_utf8(variable.name);
  switch (values.availability) {
    case host::Availability::given:
      break;
    case host::Availability::not_in_this_step:
      throw CommandError(
          ExitStatus::usage, file,
          fmt::format("variable {} is not there for part {} at step {}", name, part.number, session.step()));
    case host::Availability::not_offered:
      throw CommandError(ExitStatus::failure, file,
                         fmt::format("the reader offers no values of variable {}", name));
    case host::Availability::failed:
      throw CommandError(ExitStatus::unreadable, file, host::message_to_utf8(values.reason));
  }
  return std::move(values.array);
}

}  // namespace

ValueTable make_value_table(host::Session& session, int variable, int part, std::optional<int> component) {
  const host::Variable& asked = session.variable(variable);
  const host::Part& place = session.part(part);
  ValueTable table;
  host::Coordinates points = session.coordinates(part);
  table.row_name = "node";
  if (asked.location == host::Location::element) {
    table.row_name = "element";
    points = element_centres(points, session.elements(part), static_cast<std::size_t>(place.element_count()));
  }
  for (std::size_t axis = 0; axis < 3; ++axis)
    table.columns.push_back({kAxes[axis], std::move(points.axes[axis])});

  const std::string name = host::printable(asked.name);
  const int first = component.value_or(0);
  const int last = component.value_or(asked.components() - 1);
  for (int i = first; i <= last; ++i) {
    stop_if_interrupted();
    const bool is_vector = asked.kind == host::VariableKind::vector;
    table.columns.push_back({is_vector ? name + "_" + kAxes[static_cast<std::size_t>(i)] : name,
                             values_of(session, asked, place, i)});
  }
  return table;
}

}  // namespace tool
