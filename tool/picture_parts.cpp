#include "tool/picture_parts.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <vtkFloatArray.h>

#include "host/part_tree.h"

namespace tool {
namespace {

std::set<int> parts_of_kind(const host::Session& session, host::PartKind kind) {
  std::set<int> parts;
  for (const host::Part& part : session.parts()) {
    if (part.kind == kind && part.element_count() > 0) parts.insert(part.number);
  }
  return parts;
}

}  // namespace

ChosenParts usual_parts(host::Session& session) {
  const std::set<int> surfaces = parts_of_kind(session, host::PartKind::surface);
  for (const host::PartFolder& folder : host::make_part_tree(session, {surfaces.begin(), surfaces.end()})) {
    if (folder.name == host::kSurfaces && !folder.parts.empty())
      return {session, {folder.parts.begin(), folder.parts.end()}};
  }
  for (const host::PartKind kind : {host::PartKind::surface, host::PartKind::volume, host::PartKind::whole}) {
    const std::set<int> parts = parts_of_kind(session, kind);
    if (!parts.empty()) return {session, parts};
  }
  return {};
}

void ValueRange::add(vtkDataArray* values, int nodes) {
  has_nodes_ = has_nodes_ || nodes > 0;
  has_values_ = has_values_ || (values != nullptr && nodes > 0);
  auto* array = vtkFloatArray::SafeDownCast(values);
  if (array == nullptr) return;
  add(std::span(array->GetPointer(0), static_cast<std::size_t>(array->GetNumberOfValues())));
}

void ValueRange::add(std::span<const float> values) {
  for (const float number : values) {
    const auto value = static_cast<double>(number);
    if (!std::isfinite(value)) continue;
    low_ = is_empty_ ? value : std::min(low_, value);
    high_ = is_empty_ ? value : std::max(high_, value);
    is_empty_ = false;
  }
}

void ValueRange::add(const ValueRange& other) {
  has_nodes_ = has_nodes_ || other.has_nodes_;
  has_values_ = has_values_ || other.has_values_;
  if (other.is_empty_) return;
  low_ = is_empty_ ? other.low_ : std::min(low_, other.low_);
  high_ = is_empty_ ? other.high_ : std::max(high_, other.high_);
  is_empty_ = false;
}

ValuesOnParts ValueRange::on_parts() const {
  if (!is_empty_ || !has_nodes_) return ValuesOnParts::defined;
  return has_values_ ? ValuesOnParts::undefined : ValuesOnParts::none;
}

std::array<double, 2> ValueRange::ends() const {
  if (is_empty_) return {0, 1};
  if (low_ < high_) return {low_, high_};
  const double margin = low_ == 0 ? 0.5 : std::abs(low_) / 2;
  return {low_ - margin, high_ + margin};
}

}  // namespace tool
