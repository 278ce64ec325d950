#include "tool/value_table.h"

#include <array>
#include <utility>

#include "fmt/format.h"
#include "host/text_encoding.h"
#include "host/undefined_value.h"
#include "tool/exit_status.h"
#include "tool/interrupt.h"
#include "tool/read_error.h"
#include "tool/vector_components.h"

namespace tool {
namespace {

// The centres of a part's elements: the means of their nodes, in the order of the element blocks.
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

host::HostArray magnitude_column(const std::array<host::HostArray, 3>& vector) {
  const std::span<const float> x = vector[0].values();
  const std::span<const float> y = vector[1].values();
  const std::span<const float> z = vector[2].values();
  host::HostArray result(x.size(), 0);
  float* next = result.entries() + 1;
  for (std::size_t i = 0; i < x.size(); ++i) *next++ = magnitude(x[i], y[i], z[i]);
  return result;
}

// Adds the columns of one choice to the table, which has its rows already.
class ColumnReader {
 public:
  ColumnReader(host::Session& session, const host::Part& part, ValueTable& table)
      : session_(session), part_(part), table_(table), rows_(table.columns.front().values().size()) {}

  void add(const ChosenComponent& chosen) {
    const host::Variable& variable = session_.variable(chosen.variable);
    const std::string name = host::printable(variable.name);
    if (variable.kind != host::VariableKind::vector) {
      table_.columns.push_back({name, read(variable, chosen.component.value_or(0))});
    } else if (chosen.component == kMagnitude) {
      table_.columns.push_back(
          {name + "_magnitude", magnitude_column({read(variable, 0), read(variable, 1), read(variable, 2)})});
    } else {
      for (int i = chosen.component.value_or(0); i <= chosen.component.value_or(2); ++i)
        table_.columns.push_back({name + "_" + kAxes[static_cast<std::size_t>(i)], read(variable, i)});
    }
  }

 private:
  host::HostArray read(const host::Variable& variable, int component) {
    stop_if_interrupted();
    host::PartValues values = session_.values(variable.number, part_.number, component);
    const std::string file = session_.path().string();
    const std::string name = host::to_utf8(variable.name);
    switch (values.availability) {
      case host::Availability::given:
        break;
      case host::Availability::not_in_this_step:
        if (table_.missing.empty() || table_.missing.back() != name) table_.missing.push_back(name);
        return {rows_, host::kUndefinedValue};
      case host::Availability::not_offered:
        throw CommandError(ExitStatus::failure, file,
                           fmt::format("the reader offers no values of variable {}", name));
      case host::Availability::failed:
        throw CommandError(ExitStatus::unreadable, read_problem(values, session_, "variable " + name).text());
    }
    return std::move(values.array);
  }

  host::Session& session_;
  const host::Part& part_;
  ValueTable& table_;
  std::size_t rows_;
};

}  // namespace

std::size_t row_count(const host::Variable& variable, const host::Part& part) {
  return static_cast<std::size_t>(variable.location == host::Location::element ? part.element_count()
                                                                               : part.nodes);
}

ValueTable make_value_table(host::Session& session, const std::vector<ChosenComponent>& chosen, int part,
                            const AxisNames& axes) {
  const host::Part& place = session.part(part);
  ValueTable table;
  host::Coordinates points = session.coordinates(part);
  table.row_name = "node";
  if (session.variable(chosen.front().variable).location == host::Location::element) {
    table.row_name = "element";
    points = element_centres(points, session.elements(part), static_cast<std::size_t>(place.element_count()));
  }
  for (std::size_t axis = 0; axis < 3; ++axis)
    table.columns.push_back({axes[axis], std::move(points.axes[axis])});
  ColumnReader reader(session, place, table);
  for (const ChosenComponent& one : chosen) reader.add(one);
  return table;
}

}  // namespace tool
