// The entry points as a host calls them, with guarded arrays: a write out of bounds is a test failure.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "host/entry_points.h"

namespace reader_test {

// The contents of the arrays before a call.
inline constexpr int kUntouchedInt = -7654321;
inline constexpr float kUntouchedFloat = -7654321.5F;
inline constexpr char kUntouchedChar = '\x7e';

// One part of the build information; `elements` has the non-zero counts by slot.
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

// Nothing here writes to stderr by itself.
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

  // All nodes of a part, or the result with arrays for `nodes` nodes.
  Points coordinates(int part) const;
  Points coordinates(int part, int nodes) const;

  // All elements of a part in a slot, or the result with room for `count` rows.
  Rows rows(int part, int slot) const;
  Rows rows(int part, int slot, int count) const;

  std::vector<VariableInfo> variables() const;
  Answer ask(const Request& request, int count) const;
  // Values at all nodes of a part; the result must be 1.
  Floats scalar(int variable, int part) const;
  Floats vector(int variable, int part, int component) const;
  // Material numbers of all elements of a part in a slot.
  Floats materials(int part, int slot) const;

  std::vector<float> times(int set) const;
  // The part groups, requested with two calls as a host does; messages are dropped.
  std::string metadata() const;

 private:
  const host::EntryPoints* api_;
};

// The x coordinates.
Floats x_of(const Points& points);

}  // namespace reader_test
