// The entry points as a host calls them, with arrays of the host's sizes inside larger ones: whatever is
// written beside the place that is meant is a test failure.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "host/entry_points.h"

namespace reader_test {

// What the arrays hold before a call.
inline constexpr int kUntouchedInt = -7654321;
inline constexpr float kUntouchedFloat = -7654321.5F;
inline constexpr char kUntouchedChar = '\x7e';

// One part of the build information; `elements` are the counts of the slots that have any.
struct PartInfo {
  int id = 0;
  int type = 0;
  std::string name{};
  int nodes = 0;
  std::map<int, int> elements{};

  friend bool operator==(const PartInfo&, const PartInfo&) = default;
};
void PrintTo(const PartInfo& part, std::ostream* out);

struct VariableInfo {
  std::string description{};
  int type = 0;      // 1 scalar, 2 vector
  int classify = 0;  // 4 per node, 1 per element

  friend bool operator==(const VariableInfo&, const VariableInfo&) = default;
};
void PrintTo(const VariableInfo& variable, std::ostream* out);

// The parameters of USERD_get_var_by_component.
struct Request {
  int variable = 0;
  int part = 0;
  int var_type = 1;
  int slot = 0;
  int imaginary = 0;
  int component = 0;
};

struct Answer {
  int result = 0;
  std::vector<float> values{};  // entries 1 to count

  friend bool operator==(const Answer&, const Answer&) = default;
};
void PrintTo(const Answer& answer, std::ostream* out);

using Points = std::vector<std::array<float, 3>>;
using Rows = std::vector<std::vector<int>>;
using Floats = std::vector<float>;

// Nothing here writes to the standard error stream by itself.
class HostCalls {
 public:
  explicit HostCalls(const host::EntryPoints& api) : api_(&api) {}

  const host::EntryPoints& api() const { return *api_; }

  // The result of USERD_set_filenames.
  int open(const std::filesystem::path& path, const std::string& second = "") const;

  int part_count() const { return api_->get_number_of_model_parts(); }
  std::vector<PartInfo> parts() const;
  PartInfo part(int number) const;
  std::vector<std::string> part_names() const;

  // All nodes of a part, or what is written when the host makes room for `nodes`.
  Points coordinates(int part) const;
  Points coordinates(int part, int nodes) const;

  // All elements of a part in a slot, or what is written when the host makes room for `count`.
  Rows rows(int part, int slot) const;
  Rows rows(int part, int slot, int count) const;

  std::vector<VariableInfo> variables() const;
  Answer ask(const Request& request, int count) const;
  // Values at all nodes of a part; the result has to be 1.
  Floats scalar(int variable, int part) const;
  Floats vector(int variable, int part, int component) const;
  // Material numbers of all elements of a part in a slot.
  Floats materials(int part, int slot) const;

  std::vector<float> times(int set) const;
  // The block of part groups, taken with two calls as a host does; what they write is dropped.
  std::string metadata() const;

 private:
  const host::EntryPoints* api_;
};

// The x coordinates.
Floats x_of(const Points& points);

}  // namespace reader_test
