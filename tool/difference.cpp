#include "tool/difference.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "fmt/format.h"
#include "host/undefined_value.h"

namespace tool {
namespace {

enum class ValueKind { number, undefined, not_a_number };

ValueKind kind_of(float value) {
  if (host::is_undefined(value)) return ValueKind::undefined;
  return std::isnan(value) ? ValueKind::not_a_number : ValueKind::number;
}

// How far apart two values are that are not equal.
double distance(float a, float b) {
  const bool both = kind_of(a) == ValueKind::number && kind_of(b) == ValueKind::number;
  return both ? std::abs(static_cast<double>(a) - static_cast<double>(b))
              : std::numeric_limits<double>::infinity();
}

bool are_equal(float a, float b, const Tolerance& tolerance) {
  if (a == b) return true;
  const ValueKind kind = kind_of(a);
  if (kind != kind_of(b)) return false;
  return kind != ValueKind::number || tolerance.allows(static_cast<double>(a), static_cast<double>(b));
}

std::string value_text(double value) {
  if (host::is_undefined(static_cast<float>(value))) return "undefined";
  return std::isnan(value) ? "NaN" : fmt::format("{:.9g}", value);
}

std::string place_text(const Difference& difference, const DifferingPlace& place) {
  const std::size_t row = difference.first_row + place.index / difference.row_length + 1;
  const std::string entry =
      difference.row_length > 1 ? fmt::format(" entry {}", place.index % difference.row_length + 1) : "";
  return fmt::format("{} {}{}: {} -> {}", difference.row, row, entry, value_text(place.a),
                     value_text(place.b));
}

// "part 3 (surface blade)"; with both numbers where they are different ones.
std::string part_text(const DifferingPart& part) {
  const int number = part.number_a ? *part.number_a : part.number_b.value_or(0);
  const bool is_renumbered = part.number_a && part.number_b && part.number_a != part.number_b;
  const std::string other = is_renumbered ? fmt::format(" and {}", *part.number_b) : "";
  return fmt::format("part{} {}{} ({} {})", is_renumbered ? "s" : "", number, other, part.kind, part.name);
}

}  // namespace

bool Tolerance::allows(double a, double b) const {
  if (!std::isfinite(a) || !std::isfinite(b)) return a == b;
  const double apart = std::abs(a - b);
  return apart <= absolute || apart <= relative * std::max(std::abs(a), std::abs(b));
}

ListDifference compare_values(std::span<const float> a, std::span<const float> b,
                              const Tolerance& tolerance) {
  ListDifference found;
  found.compared = a.size();
  double most = -1;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (are_equal(a[i], b[i], tolerance)) continue;
    const DifferingPlace place{i, static_cast<double>(a[i]), static_cast<double>(b[i])};
    if (found.differing++ == 0) found.first = place;
    const double apart = distance(a[i], b[i]);
    if (apart > most) {
      most = apart;
      found.most = place;
    }
  }
  return found;
}

ListDifference compare_numbers(std::span<const int> a, std::span<const int> b) {
  ListDifference found;
  found.compared = a.size();
  double most = -1;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i] == b[i]) continue;
    const DifferingPlace place{i, static_cast<double>(a[i]), static_cast<double>(b[i])};
    if (found.differing++ == 0) found.first = place;
    if (std::abs(place.a - place.b) > most) {
      most = std::abs(place.a - place.b);
      found.most = place;
    }
  }
  return found;
}

std::string difference_text(const Difference& difference) {
  std::string text;
  if (difference.step_a && difference.step_b) {
    text += *difference.step_a == *difference.step_b
                ? fmt::format("step {}: ", *difference.step_a)
                : fmt::format("steps {} and {}: ", *difference.step_a, *difference.step_b);
  }
  if (difference.part) text += part_text(*difference.part) + ": ";
  if (!difference.variable.empty()) text += fmt::format("variable {}: ", difference.variable);
  // Of a part or variable that is in one of them only, its name says enough.
  if (difference.kind == "part" || difference.kind == "variable")
    return text + fmt::format("{} -> {}", difference.a, difference.b);
  text += difference.kind;
  if (!difference.component.empty()) text += " " + difference.component;
  if (!difference.list) return text + fmt::format(": {} -> {}", difference.a, difference.b);
  const ListDifference& list = *difference.list;
  text += fmt::format(": {} of {} differ; first {}", list.differing, list.compared,
                      place_text(difference, list.first));
  if (list.differing > 1 && difference.kind != "connectivity")
    text += fmt::format("; most {}", place_text(difference, list.most));
  return text;
}

}  // namespace tool
