#include "tests/decoders/answers.h"

#include <cmath>
#include <cstring>
#include <sstream>

namespace decoders {
namespace {

template <class Value>
std::string shown(const Value& value) {
  std::ostringstream text;
  text.precision(9);
  text << value;
  return text.str();
}

std::string at(const std::string& place, const std::string& difference) {
  return difference.empty() ? "" : place + ": " + difference;
}

bool same(float a, float b) {
  return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}
bool same(int a, int b) {
  return a == b;
}
bool same(const std::string& a, const std::string& b) {
  return a == b;
}

template <class Value>
std::string difference_of(const std::vector<Value>& served, const std::vector<Value>& expected) {
  if (served.size() != expected.size()) return shown(served.size()) + " instead of " + shown(expected.size());
  for (std::size_t i = 0; i < served.size(); ++i) {
    if (!same(served[i], expected[i])) {
      return "number " + shown(i) + " is " + shown(served[i]) + " instead of " + shown(expected[i]);
    }
  }
  return "";
}

std::string difference_of_coordinates(const PartAnswers& served, const PartAnswers& expected) {
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const std::vector<float>& got = served.coordinates.at(axis);
    const std::vector<float>& wanted = expected.coordinates.at(axis);
    if (got.size() != wanted.size()) return shown(got.size()) + " nodes instead of " + shown(wanted.size());
    for (std::size_t i = 0; i < got.size(); ++i) {
      const double distance = std::abs(static_cast<double>(got[i]) - static_cast<double>(wanted[i]));
      if (same(got[i], wanted[i]) || distance <= expected.tolerance[i]) continue;
      // Where a motion overflows, both sides need not do so at the same place.
      if (std::isinf(expected.tolerance[i])) continue;
      return "axis " + shown(axis) + " of node " + shown(i + 1) + " is " + shown(got[i]) + " instead of " +
             shown(wanted[i]) + " +- " + shown(expected.tolerance[i]);
    }
  }
  return "";
}

std::string difference_of_parts(const PartAnswers& served, const PartAnswers& expected) {
  if (served.name != expected.name) return "is named " + served.name + " instead of " + expected.name;
  if (served.nodes != expected.nodes) {
    return "has " + shown(served.nodes) + " nodes instead of " + shown(expected.nodes);
  }
  if (served.elements != expected.elements) return "has other numbers of elements";
  const std::string moved = difference_of_coordinates(served, expected);
  if (!moved.empty()) return moved;
  for (const auto& [slot, rows] : expected.rows) {
    const std::string other = difference_of(served.rows.at(slot), rows);
    if (!other.empty()) return at("rows of slot " + shown(slot), other);
  }
  return "";
}

std::string difference_of_steps(const StepAnswers& served, const StepAnswers& expected) {
  if (served.parts.size() != expected.parts.size()) {
    return shown(served.parts.size()) + " parts instead of " + shown(expected.parts.size());
  }
  for (std::size_t p = 0; p < served.parts.size(); ++p) {
    const std::string other = difference_of_parts(served.parts[p], expected.parts[p]);
    if (!other.empty()) return at("part " + shown(p + 1), other);
  }
  if (served.values.size() != expected.values.size()) return "other values are there";
  for (const auto& [key, wanted] : expected.values) {
    const std::string place = "variable " + shown(key[0] + 1) + " on part " + shown(key[1] + 1) +
                              ", component or slot " + shown(key[2]);
    const auto got = served.values.find(key);
    if (got == served.values.end()) return at(place, "is not there");
    if (got->second.result != wanted.result) {
      return at(place, "result " + shown(got->second.result) + " instead of " + shown(wanted.result));
    }
    const std::string other = difference_of(got->second.values, wanted.values);
    if (!other.empty()) return at(place, other);
  }
  return "";
}

}  // namespace

std::string difference(const Answers& served, const Answers& expected) {
  for (std::size_t set = 0; set < 2; ++set) {
    const std::string other = difference_of(served.times.at(set), expected.times.at(set));
    if (!other.empty()) return at("times of set " + shown(set + 1), other);
  }
  if (served.changing_geometry != expected.changing_geometry) {
    return "changing geometry " + shown(served.changing_geometry) + " instead of " +
           shown(expected.changing_geometry);
  }
  const std::string other = difference_of(served.variables, expected.variables);
  if (!other.empty()) return at("variables", other);
  for (std::size_t s = 0; s < expected.steps.size(); ++s) {
    const std::string found = difference_of_steps(served.steps.at(s), expected.steps[s]);
    if (!found.empty()) return at("step " + shown(s), found);
  }
  return "";
}

}  // namespace decoders
