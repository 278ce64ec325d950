#include "tool/prober.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>
#include <utility>

#include "host/error.h"
#include "host/text_encoding.h"
#include "host/undefined_value.h"
#include "tool/interrupt.h"
#include "tool/read_error.h"
#include "tool/vector_components.h"

namespace tool {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::vector<ProbeColumn> columns_of(const std::vector<Quantity>& quantities) {
  std::vector<ProbeColumn> columns;
  for (std::size_t i = 0; i < quantities.size(); ++i) {
    const std::string name = host::printable(quantities[i].variable.name);
    if (quantities[i].variable.kind != host::VariableKind::vector) {
      columns.push_back({i, std::nullopt, name});
      continue;
    }
    for (int component = 0; component <= kMagnitude; ++component) {
      const bool is_chosen =
          quantities[i].component ? *quantities[i].component == component : component != kMagnitude;
      if (is_chosen)
        columns.push_back({i, component, name + "_" + kComponents.at(static_cast<std::size_t>(component))});
    }
  }
  return columns;
}

// A node whose share is rounding does not count.
bool counts(double weight) {
  constexpr double kRounding = 1e-9;
  return std::abs(weight) > kRounding;
}

// One component at a place; NaN where a node that counts, or the element, has no value.
double value_at(const analysis::ElementAt& place, std::span<const float> values, host::Location location) {
  const auto defined = [](float value) {
    return host::is_undefined(value) ? kNaN : static_cast<double>(value);
  };
  if (location == host::Location::element) return defined(values[static_cast<std::size_t>(place.element)]);
  double sum = 0;
  for (std::size_t i = 0; i < static_cast<std::size_t>(place.nodes); ++i) {
    if (counts(place.weight[i]))
      sum += place.weight[i] * defined(values[static_cast<std::size_t>(place.node[i])]);
  }
  return sum;
}

}  // namespace

const char* found_word(PointFound found) {
  switch (found) {
    case PointFound::inside:
      return "inside";
    case PointFound::blanked:
      return "blanked";
    default:
      return "outside";
  }
}

Prober::Prober(host::Session& session, std::vector<Quantity> quantities, std::vector<analysis::Vec3> points)
    : session_(session),
      quantities_(std::move(quantities)),
      points_(std::move(points)),
      columns_(columns_of(quantities_)),
      values_(session) {}

void Prober::locate() {
  analysis::MeshLocator locator(
      session_, [this](const host::Part& part) { return names_.of(session_, part) == kCylindricalAxes; });
  std::vector<std::vector<analysis::ElementAt>> found;
  found.reserve(points_.size());
  for (const analysis::Vec3& point : points_) {
    stop_if_interrupted();
    found.push_back(locator.find(point));
  }
  elements_ = std::move(found);
  located_at_ = session_.geometry_step_of(session_.step());
}

ProbedStep Prober::probe(Problems& problems) {
  const bool has_moved = session_.changing_geometry() != host::ChangingGeometry::fixed &&
                         located_at_ != session_.geometry_step_of(session_.step());
  if (!located_at_ || has_moved) locate();
  std::vector<int> parts;  // with points in them
  for (const auto& elements : elements_) {
    for (const analysis::ElementAt& element : elements) {
      if (std::find(parts.begin(), parts.end(), element.part) == parts.end()) parts.push_back(element.part);
    }
  }
  // Per part, the values of each quantity.
  std::vector<std::vector<PartComponents>> values;
  for (const int part : parts) {
    std::vector<PartComponents>& of_part = values.emplace_back();
    for (const Quantity& quantity : quantities_) {
      stop_if_interrupted();
      of_part.push_back(read(quantity, part, problems));
    }
  }
  ProbedStep step;
  step.found.assign(points_.size(), PointFound::outside);
  step.region_set.assign(points_.size(), -1);
  step.element.assign(points_.size(), 0);
  step.values.assign(points_.size() * columns_.size(), kNaN);
  for (std::size_t i = 0; i < points_.size(); ++i) {
    for (const analysis::ElementAt& place : elements_[i]) {
      const auto part =
          static_cast<std::size_t>(std::find(parts.begin(), parts.end(), place.part) - parts.begin());
      if (elements_[i].size() > 1 || session_.region_set_count() > 1) {
        step.found[i] = PointFound::blanked;
        if (is_blanked(place, values[part])) continue;
      }
      step.found[i] = PointFound::inside;
      step.region_set[i] = place.region_set;
      step.element[i] = place.element + 1;
      fill(place, values[part], std::span(step.values).subspan(i * columns_.size(), columns_.size()));
      break;
    }
  }
  return step;
}

Prober::PartComponents Prober::read(const Quantity& quantity, int part, Problems& problems) {
  PartComponents components;
  for (int component = 0; component < quantity.variable.components(); ++component) {
    const bool is_needed =
        quantity.component.value_or(kMagnitude) == kMagnitude || *quantity.component == component;
    if (!is_needed) continue;
    const bool was_lost = session_.is_lost();
    host::PartValues values = values_.values(quantity, part, component);
    if (values.availability == host::Availability::failed && !was_lost) {
      const std::string name = "variable " + host::to_utf8(quantity.variable.name);
      problems.add(read_problem(values, session_, name).text());
    }
    if (values.availability != host::Availability::given) return {};
    components[static_cast<std::size_t>(component)] = std::move(values.array);
  }
  return components;
}

// A variable without any value at the place tells nothing, and marks are there on blanked nodes too.
bool Prober::is_blanked(const analysis::ElementAt& place, const std::vector<PartComponents>& values) const {
  bool is_told = false;
  for (std::size_t i = 0; i < quantities_.size(); ++i) {
    const host::Variable& variable = quantities_[i].variable;
    if (variable.location != host::Location::node || variable.name.starts_with('@')) continue;
    for (const host::HostArray& component : values[i]) {
      if (component.values().empty()) continue;
      is_told = true;
      if (!std::isnan(value_at(place, component.values(), variable.location))) return false;
      break;
    }
  }
  return is_told;
}

void Prober::fill(const analysis::ElementAt& place, const std::vector<PartComponents>& values,
                  std::span<double> row) const {
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const ProbeColumn& column = columns_[i];
    const host::Location location = quantities_[column.quantity].variable.location;
    const PartComponents& components = values[column.quantity];
    const auto at = [&](std::size_t component) {
      const std::span<const float> all = components[component].values();
      return all.empty() ? kNaN : value_at(place, all, location);
    };
    if (column.component == kMagnitude) {
      row[i] = analysis::length({at(0), at(1), at(2)});
    } else {
      row[i] = at(static_cast<std::size_t>(column.component.value_or(0)));
    }
  }
}

}  // namespace tool
