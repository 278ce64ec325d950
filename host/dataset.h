// The plain values into which a session turns a reader's answers. Names and labels are bytes as in the file
// (text_encoding.h converts them to UTF-8). Parts, variables and nodes are numbered from 1; steps and region
// sets from 0.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "host/element_slots.h"
#include "host/large_array.h"

namespace host {

// Who the reader is.
struct ReaderIdentity {
  std::string name;
  std::string release;
  std::string api_version;
  std::string description;
  std::string file_label;
  bool two_files = false;  // whether it expects a second file name
};

// A time set of the dataset with the solution times of its steps.
struct TimeSet {
  int number = 0;
  std::string description;
  std::vector<float> times;
};

// How the geometry changes between the steps of its time set.
enum class ChangingGeometry { fixed = 0, coordinates = 1, connectivity = 2 };

// What a part is: a surface region, a volume region, or the whole mesh of one region set.
enum class PartKind { surface, volume, whole };

struct Part {
  int number = 0;
  std::string name;
  PartKind kind = PartKind::surface;
  std::optional<int> region_set;  // empty if unknown
  int nodes = 0;
  std::array<int, kElementSlots> elements{};  // per slot

  std::int64_t element_count() const;
};

// An array of `count` values in the layout that a reader writes: the first value is entry 1.
class HostArray {
 public:
  HostArray() = default;
  explicit HostArray(std::size_t count) : entries_(count + 1) {}
  HostArray(std::size_t count, float filled_with);

  // The array to pass to the reader, which writes entries 1 to `count`.
  float* entries() { return entries_.data(); }
  std::span<const float> values() const { return std::span(entries_).subspan(entries_.empty() ? 0 : 1); }
  // Hands over the memory, with the first value in entry 1.
  LargeArray<float> release() && { return std::move(entries_); }

 private:
  LargeArray<float> entries_;
};

// The coordinates of a part's nodes, in the order of their numbers.
struct Coordinates {
  std::array<HostArray, 3> axes;

  std::span<const float> x() const { return axes[0].values(); }
  std::span<const float> y() const { return axes[1].values(); }
  std::span<const float> z() const { return axes[2].values(); }
  std::size_t size() const { return x().size(); }
};

// The elements of one shape in a part: `shape.nodes` node numbers of the part per element, from 1 unless
// another first number was asked for.
struct ElementBlock {
  ElementShape shape{};
  LargeArray<int> nodes;

  std::size_t size() const { return nodes.size() / static_cast<std::size_t>(shape.nodes); }
  std::span<const int> element(std::size_t i) const {
    const auto width = static_cast<std::size_t>(shape.nodes);
    return std::span(nodes).subspan(i * width, width);
  }
};

enum class VariableKind { scalar, vector, other };
enum class Location { node, element, other };

struct Variable {
  int number = 0;
  std::string name;
  std::string label;
  std::string description;  // as the reader gives it: "label (name)"
  VariableKind kind = VariableKind::other;
  Location location = Location::other;
  int time_set = 0;

  int components() const { return kind == VariableKind::vector ? 3 : 1; }
};

// The outcome of a request for values.
enum class Availability {
  given,
  not_in_this_step,  // the file of the step does not have the quantity
  not_offered,       // the reader does not support such requests
  failed,            // the quantity could not be read
};

// One component of a variable on a part: one value per node, or one per element in the order of the part's
// element blocks. Undefined entries hold kUndefinedValue (undefined_value.h). Empty unless availability
// is `given`.
struct PartValues {
  Availability availability = Availability::given;
  std::string reason{};  // why it failed
  std::string file{};    // the file that could not be read, if known
  HostArray array{};

  std::span<const float> values() const { return array.values(); }
};

// A named group of the reader's part list, with the names of its parts.
struct PartGroup {
  std::string name;
  std::vector<std::string> parts;
};

struct Metadata {
  std::string xml;  // empty if the reader provides none
  std::vector<PartGroup> groups;
};

}  // namespace host
