#include "tests/reader/host_calls.h"

#include "gtest/gtest.h"
#include <algorithm>
#include <cstring>
#include <ostream>

#include "host/call_arrays.h"
#include "tests/reader/stderr_text.h"

namespace reader_test {
namespace {

constexpr std::size_t kGuard = 4;  // entries behind every array
constexpr std::size_t kText = 80;  // characters of the host's buffers

template <class T>
constexpr T kUntouched = kUntouchedInt;
template <>
constexpr float kUntouched<float> = kUntouchedFloat;
template <>
constexpr char kUntouched<char> = kUntouchedChar;

template <class T>
bool are_untouched(const T* begin, std::size_t count) {
  return std::all_of(begin, begin + count, [](T value) { return value == kUntouched<T>; });
}

// An array of `size` entries followed by guard entries.
template <class T>
class GuardedArray {
 public:
  explicit GuardedArray(std::size_t size) : entries_(size + kGuard, kUntouched<T>), size_(size) {}

  T* data() { return entries_.data(); }
  T operator[](std::size_t i) const { return entries_[i]; }
  void expect_guard(const char* what) const {
    EXPECT_TRUE(are_untouched(entries_.data() + size_, kGuard)) << what << " written beyond their end";
  }
  void expect_untouched(const char* what) const {
    EXPECT_TRUE(are_untouched(entries_.data(), entries_.size())) << what << " written";
  }

 private:
  std::vector<T> entries_;
  std::size_t size_;
};

// `count` rows of `width` entries, each followed by guard entries, and then guard rows.
template <class T>
class GuardedRows {
 public:
  GuardedRows(std::size_t count, std::size_t width)
      : pool_((count + kGuard) * (width + kGuard), kUntouched<T>), count_(count), width_(width) {
    for (std::size_t i = 0; i < count + kGuard; ++i) rows_.push_back(pool_.data() + i * (width + kGuard));
  }

  T** rows() { return rows_.data(); }
  const T* operator[](std::size_t i) const { return rows_[i]; }
  void expect_guard(const char* what) const {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      const std::size_t from = i < count_ ? width_ : 0;
      EXPECT_TRUE(are_untouched(rows_[i] + from, width_ + kGuard - from))
          << what << " written beyond their end in row " << i;
    }
  }
  void expect_untouched(const char* what) const {
    EXPECT_TRUE(are_untouched(pool_.data(), pool_.size())) << what << " written";
  }

 private:
  std::vector<T> pool_;
  std::vector<T*> rows_;
  std::size_t count_;
  std::size_t width_;
};

struct GuardedStorage {
  template <class T>
  using Array = GuardedArray<T>;
  template <class T>
  using Rows = GuardedRows<T>;
  using Texts = GuardedRows<char>;
};

std::string text_of(const char* buffer) {
  const std::size_t length = strnlen(buffer, kText);
  EXPECT_LT(length, kText) << "a text of the host's is not terminated";
  return {buffer, length};
}

}  // namespace

void PrintTo(const PartInfo& part, std::ostream* out) {
  *out << part.id << " type " << part.type << " '" << part.name << "' " << part.nodes << " nodes";
  for (const auto& [slot, count] : part.elements) *out << ", slot " << slot << ": " << count;
}

void PrintTo(const VariableInfo& variable, std::ostream* out) {
  *out << "'" << variable.description << "' type " << variable.type << " class " << variable.classify;
}

void PrintTo(const Answer& answer, std::ostream* out) {
  *out << answer.result << ": " << testing::PrintToString(answer.values);
}

int HostCalls::open(const std::filesystem::path& path, const std::string& second) const {
  return host::call_set_filenames(*api_, path, host::call_directly, second);
}

std::vector<PartInfo> HostCalls::parts() const {
  const auto count = static_cast<std::size_t>(part_count());
  host::PartArrays<GuardedStorage> arrays(count);
  EXPECT_EQ(1, arrays.fill(*api_, host::call_directly));
  arrays.ids.expect_guard("part ids");
  arrays.types.expect_guard("part types");
  arrays.nodes.expect_guard("node counts");
  arrays.descriptions.expect_guard("part descriptions");
  arrays.elements.expect_guard("element counts");
  arrays.dimensions.expect_untouched("block dimensions");
  arrays.blanking.expect_untouched("blanking options");
  std::vector<PartInfo> parts(count);
  for (std::size_t i = 0; i < count; ++i) {
    parts[i] = {.id = arrays.ids[i],
                .type = arrays.types[i],
                .name = text_of(arrays.descriptions[i]),
                .nodes = arrays.nodes[i],
                .elements = {}};
    for (int slot = 0; slot < host::kElementSlots; ++slot) {
      if (arrays.elements[i][slot] != 0) parts[i].elements[slot] = arrays.elements[i][slot];
    }
  }
  return parts;
}

PartInfo HostCalls::part(int number) const {
  return parts().at(static_cast<std::size_t>(number) - 1);
}

std::vector<std::string> HostCalls::part_names() const {
  std::vector<std::string> names;
  for (const PartInfo& part : parts()) names.push_back(part.name);
  return names;
}

Points HostCalls::coordinates(int part) const {
  return coordinates(part, this->part(part).nodes);
}

Points HostCalls::coordinates(int part, int nodes) const {
  const auto count = static_cast<std::size_t>(nodes);
  GuardedRows<float> axes(3, count + 1);
  EXPECT_EQ(1, api_->get_part_coords(part, axes.rows()));
  axes.expect_guard("coordinates");
  Points points(count);
  for (std::size_t axis = 0; axis < 3; ++axis) {
    EXPECT_EQ(kUntouchedFloat, axes[axis][0]) << "entry 0 written";
    for (std::size_t i = 0; i < count; ++i) points[i][axis] = axes[axis][i + 1];
  }
  return points;
}

Rows HostCalls::rows(int part, int slot) const {
  const auto elements = this->part(part).elements;
  const auto found = elements.find(slot);
  return rows(part, slot, found == elements.end() ? 0 : found->second);
}

Rows HostCalls::rows(int part, int slot, int count) const {
  const host::ElementShape* shape = host::shape_of_slot(slot);
  const std::size_t width = shape != nullptr ? static_cast<std::size_t>(shape->nodes) : 8;
  GuardedRows<int> rows(static_cast<std::size_t>(count), width);
  EXPECT_EQ(1, api_->get_part_elements_by_type(part, slot, rows.rows()));
  rows.expect_guard("rows of elements");
  Rows copied;
  for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
    copied.emplace_back(rows[i], rows[i] + width);
  }
  return copied;
}

std::vector<VariableInfo> HostCalls::variables() const {
  const auto count = static_cast<std::size_t>(api_->get_number_of_variables());
  host::VariableArrays<GuardedStorage> arrays(count);
  EXPECT_EQ(1, arrays.fill(*api_, host::call_directly));
  arrays.descriptions.expect_guard("variable descriptions");
  arrays.files.expect_guard("file names of variables");
  arrays.imaginary_files.expect_guard("file names of imaginary values");
  arrays.types.expect_guard("variable types");
  arrays.classify.expect_guard("variable classes");
  arrays.complex.expect_guard("complex flags");
  arrays.constant.expect_guard("constant flags");
  arrays.time_sets.expect_guard("time sets of variables");
  arrays.frequencies.expect_untouched("frequencies");
  std::vector<VariableInfo> variables(count);
  for (std::size_t i = 0; i < count; ++i) {
    variables[i] = {.description = text_of(arrays.descriptions[i]),
                    .type = arrays.types[i],
                    .classify = arrays.classify[i]};
    EXPECT_EQ("", text_of(arrays.files[i]));
    EXPECT_EQ("", text_of(arrays.imaginary_files[i]));
    EXPECT_EQ(0, arrays.complex[i]);
    EXPECT_EQ(0, arrays.constant[i]);
    EXPECT_EQ(2, arrays.time_sets[i]);
  }
  return variables;
}

Answer HostCalls::ask(const Request& request, int count) const {
  GuardedArray<float> values(static_cast<std::size_t>(count) + 1);
  Answer answer;
  answer.result = api_->get_var_by_component(request.variable, request.part, request.var_type, request.slot,
                                             request.imaginary, request.component, values.data());
  values.expect_guard("values");
  EXPECT_EQ(kUntouchedFloat, values[0]) << "entry 0 written";
  answer.values.assign(values.data() + 1, values.data() + 1 + count);
  return answer;
}

Floats HostCalls::scalar(int variable, int part) const {
  const Answer answer = ask({.variable = variable, .part = part}, this->part(part).nodes);
  EXPECT_EQ(1, answer.result);
  return answer.values;
}

Floats HostCalls::vector(int variable, int part, int component) const {
  const Answer answer = ask({.variable = variable, .part = part, .var_type = 2, .component = component},
                            this->part(part).nodes);
  EXPECT_EQ(1, answer.result);
  return answer.values;
}

Floats HostCalls::materials(int part, int slot) const {
  const auto elements = this->part(part).elements;
  const auto found = elements.find(slot);
  const Answer answer = ask({.variable = api_->get_number_of_variables(), .part = part, .slot = slot},
                            found == elements.end() ? 0 : found->second);
  EXPECT_EQ(1, answer.result);
  return answer.values;
}

std::vector<float> HostCalls::times(int set) const {
  const auto count = static_cast<std::size_t>(api_->get_num_of_time_steps(set));
  GuardedArray<float> times(count);
  EXPECT_EQ(1, api_->get_sol_times(set, times.data()));
  times.expect_guard("solution times");
  return {times.data(), times.data() + count};
}

std::string HostCalls::metadata() const {
  std::string text;
  stderr_of([&] {
    int size = kUntouchedInt;
    EXPECT_EQ(1, api_->get_metadata(&size, nullptr));
    GuardedArray<char> buffer(static_cast<std::size_t>(size) + 1);
    EXPECT_EQ(1, api_->get_metadata(&size, buffer.data()));
    buffer.expect_guard("the block of part groups");
    text = buffer.data();
    EXPECT_EQ(static_cast<std::size_t>(size), text.size());
  });
  return text;
}

Floats x_of(const Points& points) {
  Floats x;
  for (const auto& point : points) x.push_back(point[0]);
  return x;
}

}  // namespace reader_test
