#include "tests/reader/host_calls.h"

#include "gtest/gtest.h"
#include <algorithm>
#include <cstring>
#include <ostream>

#include "host/element_slots.h"
#include "tests/reader/stderr_text.h"

namespace reader_test {
namespace {

constexpr std::size_t kGuard = 4;  // entries behind every array
constexpr std::size_t kText = 80;  // characters of the host's buffers

template <class T>
bool are_all(const T* begin, std::size_t count, T untouched) {
  return std::all_of(begin, begin + count, [untouched](T value) { return value == untouched; });
}

// An array of `size` entries with untouched ones behind.
template <class T>
class GuardedArray {
 public:
  GuardedArray(std::size_t size, T untouched)
      : entries_(size + kGuard, untouched), size_(size), untouched_(untouched) {}

  T* data() { return entries_.data(); }
  T operator[](std::size_t i) const { return entries_[i]; }
  void expect_guard(const char* what) const {
    EXPECT_TRUE(are_all(entries_.data() + size_, kGuard, untouched_)) << what << " written beyond their end";
  }
  void expect_untouched(const char* what) const {
    EXPECT_TRUE(are_all(entries_.data(), entries_.size(), untouched_)) << what << " written";
  }

 private:
  std::vector<T> entries_;
  std::size_t size_;
  T untouched_;
};

// `count` rows of `width` entries, each with untouched ones behind, and rows behind that are all untouched.
template <class T>
class GuardedRows {
 public:
  GuardedRows(std::size_t count, std::size_t width, T untouched)
      : pool_((count + kGuard) * (width + kGuard), untouched),
        count_(count),
        width_(width),
        untouched_(untouched) {
    for (std::size_t i = 0; i < count + kGuard; ++i) rows_.push_back(pool_.data() + i * (width + kGuard));
  }

  T** data() { return rows_.data(); }
  const T* operator[](std::size_t i) const { return rows_[i]; }
  void expect_guard(const char* what) const {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      const std::size_t from = i < count_ ? width_ : 0;
      EXPECT_TRUE(are_all(rows_[i] + from, width_ + kGuard - from, untouched_))
          << what << " written beyond their end in row " << i;
    }
  }
  void expect_untouched(const char* what) const {
    EXPECT_TRUE(are_all(pool_.data(), pool_.size(), untouched_)) << what << " written";
  }

 private:
  std::vector<T> pool_;
  std::vector<T*> rows_;
  std::size_t count_;
  std::size_t width_;
  T untouched_;
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
  std::string first_name = path.string();
  std::string second_name = second;
  std::string directory = path.parent_path().string();
  return api_->set_filenames(first_name.data(), second_name.data(), directory.data(), 0);
}

std::vector<PartInfo> HostCalls::parts() const {
  const auto count = static_cast<std::size_t>(part_count());
  GuardedArray<int> ids(count, kUntouchedInt);
  GuardedArray<int> types(count, kUntouchedInt);
  GuardedArray<int> nodes(count, kUntouchedInt);
  GuardedRows<char> descriptions(count, kText, kUntouchedChar);
  GuardedRows<int> elements(count, host::kElementSlots, kUntouchedInt);
  GuardedRows<int> dimensions(count, 3, kUntouchedInt);
  GuardedRows<int> blanking(count, 6, kUntouchedInt);
  EXPECT_EQ(1, api_->get_gold_part_build_info(ids.data(), types.data(), descriptions.data(), nodes.data(),
                                              elements.data(), dimensions.data(), blanking.data()));
  ids.expect_guard("part ids");
  types.expect_guard("part types");
  nodes.expect_guard("node counts");
  descriptions.expect_guard("part descriptions");
  elements.expect_guard("element counts");
  dimensions.expect_untouched("block dimensions");
  blanking.expect_untouched("blanking options");
  std::vector<PartInfo> parts(count);
  for (std::size_t i = 0; i < count; ++i) {
    parts[i] = {
        .id = ids[i], .type = types[i], .name = text_of(descriptions[i]), .nodes = nodes[i], .elements = {}};
    for (int slot = 0; slot < host::kElementSlots; ++slot) {
      if (elements[i][slot] != 0) parts[i].elements[slot] = elements[i][slot];
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
  GuardedRows<float> axes(3, count + 1, kUntouchedFloat);
  EXPECT_EQ(1, api_->get_part_coords(part, axes.data()));
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
  GuardedRows<int> rows(static_cast<std::size_t>(count), width, kUntouchedInt);
  EXPECT_EQ(1, api_->get_part_elements_by_type(part, slot, rows.data()));
  rows.expect_guard("rows of elements");
  Rows copied;
  for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
    copied.emplace_back(rows[i], rows[i] + width);
  }
  return copied;
}

std::vector<VariableInfo> HostCalls::variables() const {
  const auto count = static_cast<std::size_t>(api_->get_number_of_variables());
  GuardedRows<char> descriptions(count, kText, kUntouchedChar);
  GuardedRows<char> filenames(count, kText, kUntouchedChar);
  GuardedRows<char> imaginary_filenames(count, kText, kUntouchedChar);
  GuardedArray<int> types(count, kUntouchedInt);
  GuardedArray<int> classify(count, kUntouchedInt);
  GuardedArray<int> complex(count, kUntouchedInt);
  GuardedArray<int> constant(count, kUntouchedInt);
  GuardedArray<int> timeset(count, kUntouchedInt);
  GuardedArray<float> frequency(count, kUntouchedFloat);
  EXPECT_EQ(1, api_->get_gold_variable_info(descriptions.data(), filenames.data(), types.data(),
                                            classify.data(), complex.data(), imaginary_filenames.data(),
                                            frequency.data(), constant.data(), timeset.data()));
  descriptions.expect_guard("variable descriptions");
  filenames.expect_guard("file names of variables");
  imaginary_filenames.expect_guard("file names of imaginary values");
  types.expect_guard("variable types");
  classify.expect_guard("variable classes");
  complex.expect_guard("complex flags");
  constant.expect_guard("constant flags");
  timeset.expect_guard("time sets of variables");
  frequency.expect_untouched("frequencies");
  std::vector<VariableInfo> variables(count);
  for (std::size_t i = 0; i < count; ++i) {
    variables[i] = {.description = text_of(descriptions[i]), .type = types[i], .classify = classify[i]};
    EXPECT_EQ("", text_of(filenames[i]));
    EXPECT_EQ("", text_of(imaginary_filenames[i]));
    EXPECT_EQ(0, complex[i]);
    EXPECT_EQ(0, constant[i]);
    EXPECT_EQ(2, timeset[i]);
  }
  return variables;
}

Answer HostCalls::ask(const Request& request, int count) const {
  GuardedArray<float> values(static_cast<std::size_t>(count) + 1, kUntouchedFloat);
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
  GuardedArray<float> times(count, kUntouchedFloat);
  EXPECT_EQ(1, api_->get_sol_times(set, times.data()));
  times.expect_guard("solution times");
  return {times.data(), times.data() + count};
}

std::string HostCalls::metadata() const {
  std::string text;
  stderr_of([&] {
    int size = kUntouchedInt;
    EXPECT_EQ(1, api_->get_metadata(&size, nullptr));
    GuardedArray<char> buffer(static_cast<std::size_t>(size) + 1, kUntouchedChar);
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
