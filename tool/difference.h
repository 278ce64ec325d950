// What `fldtool diff` finds.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace tool {

// Values are equal when they differ by at most `absolute`, or by at most `relative` times the larger of the
// two. An infinite value equals itself only.
struct Tolerance {
  double absolute = 0;
  double relative = 0;

  bool allows(double a, double b) const;
};

// One place where two lists of values differ. Undefined values are given as they are.
struct DifferingPlace {
  std::size_t index = 0;  // from 0
  double a = 0;
  double b = 0;
};

struct ListDifference {
  std::size_t compared = 0;
  std::size_t differing = 0;
  DifferingPlace first;
  DifferingPlace most;  // a place where only one side has a number comes before any other

  bool any() const { return differing > 0; }
};

// Compares lists of the same length. Undefined values equal each other, and so do those that are not a
// number.
ListDifference compare_values(std::span<const float> a, std::span<const float> b, const Tolerance& tolerance);
ListDifference compare_numbers(std::span<const int> a, std::span<const int> b);

// A part that a difference is about.
struct DifferingPart {
  std::optional<int> number_a;  // none where it is missing
  std::optional<int> number_b;
  std::string kind;  // "surface", "volume" or "whole"
  std::string name;  // UTF-8
};

struct Difference {
  // What differs: "steps", "time", "region_sets", "part", "variable", "nodes", "elements", "coordinates",
  // "connectivity", "availability" or "values".
  std::string kind{};
  std::optional<int> step_a{};
  std::optional<int> step_b{};
  std::optional<DifferingPart> part{};
  std::string variable{};   // UTF-8; empty if it is not about a variable
  std::string component{};  // the axis, or the shape of elements; empty without one
  std::string a{};          // in words, unless there is a list
  std::string b{};
  std::string row{};           // of a list: "node" or "element"
  std::size_t row_length = 1;  // entries of a row
  std::size_t first_row = 0;   // number of the first row, counted from 0
  std::optional<ListDifference> list{};
};

// A line for people, and an object for programs.
std::string difference_text(const Difference& difference);

}  // namespace tool
