#include "tests/decoders/served_answers.h"

#include <algorithm>
#include <new>
#include <stdexcept>

#include "host/call_arrays.h"
#include "host/element_slots.h"
#include "support/errors.h"
#include "tests/faults/assertion_failure.h"

namespace decoders {
namespace {

constexpr int kVector = 2;
constexpr int kPerNode = 4;

// A call that was not served.
class NotServed : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The values after the entry that is never written.
std::vector<float> without_first(const std::vector<float>& values) {
  return {values.begin() + 1, values.end()};
}

class Asking {
  // First, because its type is deduced.
  auto caller() {
    return [this](const auto& entry_point, auto... arguments) { return call(entry_point, arguments...); };
  }

 public:
  explicit Asking(const host::EntryPoints& api) : api_(api) {}

  Answers ask(const std::filesystem::path& path) {
    try {
      open(path);
      go_through();
    } catch (const NotServed& error) {
      answers_.failure = error.what();
    }
    api_.exit_routine();
    return std::move(answers_);
  }

 private:
  template <class Result, class... Parameters, class... Arguments>
  Result call(const host::EntryPoint<Result(Parameters...)>& entry_point, Arguments... arguments) {
    const std::string name = entry_point.name;
    try {
      return entry_point(arguments...);
    } catch (const fld::FLDException& exception) {
      throw NotServed(name + ": " + exception.getMessage());
    } catch (const std::bad_alloc&) {
      throw NotServed(name + ": out of memory");
    } catch (const faults::AssertionFailure& failure) {
      throw NotServed(name + ": " + failure.what());
    }
  }

  void open(const std::filesystem::path& path) {
    std::vector<int> toggles = {0, 1};
    call(api_.set_extra_gui_data, toggles.data(), nullptr, nullptr);
    int request = 1;
    int count = 0;
    float undefined = kUndefined;
    call(api_.get_extra_data, &request, nullptr, &count, nullptr, nullptr, &undefined);
    if (host::call_set_filenames(api_, path, caller()) != 1) throw NotServed("the dataset cannot be opened");
  }

  void go_through() {
    for (int set = 1; set <= 2; ++set) {
      std::vector<float>& times = answers_.times.at(static_cast<std::size_t>(set) - 1);
      times.resize(static_cast<std::size_t>(call(api_.get_num_of_time_steps, set)));
      call(api_.get_sol_times, set, times.data());
    }
    answers_.changing_geometry = call(api_.get_changing_geometry_status);
    const int variables = call(api_.get_number_of_variables);
    host::VariableArrays<host::PooledStorage> arrays(static_cast<std::size_t>(variables));
    arrays.fill(api_, caller());
    types_ = arrays.types;
    classify_ = arrays.classify;
    for (std::size_t v = 0; v < static_cast<std::size_t>(variables); ++v)
      answers_.variables.push_back(arrays.descriptions.text(v));
    const int geometry_steps = static_cast<int>(answers_.times[0].size());
    for (int step = 0; step < static_cast<int>(answers_.times[1].size()); ++step) {
      call(api_.set_time_set_and_step, 1, std::min(step, geometry_steps - 1));
      call(api_.set_time_set_and_step, 2, step);
      answers_.steps.emplace_back();
      take_parts(answers_.steps.back());
      take_values(answers_.steps.back());
    }
  }

  void take_parts(StepAnswers& step) {
    const int parts = call(api_.get_number_of_model_parts);
    host::PartArrays<host::PooledStorage> arrays(static_cast<std::size_t>(parts));
    arrays.fill(api_, caller());
    for (int number = 1; number <= std::min(parts, kMostParts); ++number) {
      const auto p = static_cast<std::size_t>(number) - 1;
      PartAnswers part{.name = arrays.descriptions.text(p), .nodes = arrays.nodes[p]};
      host::PooledRows<float> coordinates(3, static_cast<std::size_t>(part.nodes) + 1);
      call(api_.get_part_coords, number, coordinates.rows());
      for (std::size_t axis = 0; axis < 3; ++axis) {
        part.coordinates.at(axis).assign(coordinates[axis] + 1, coordinates[axis] + part.nodes + 1);
      }
      for (int slot = 0; slot < host::kElementSlots; ++slot)
        take_rows(number, slot, arrays.elements[p][slot], part);
      step.parts.push_back(std::move(part));
    }
    call(api_.stop_part_building);
  }

  void take_rows(int number, int slot, int count, PartAnswers& part) {
    if (count == 0) return;
    part.elements[slot] = count;
    const host::ElementShape* const shape = host::shape_of_slot(slot);
    if (shape == nullptr) throw NotServed("elements in a slot of no shape");
    host::PooledRows<int> rows(static_cast<std::size_t>(count), static_cast<std::size_t>(shape->nodes));
    call(api_.get_part_elements_by_type, number, slot, rows.rows());
    part.rows[slot] = rows.pool();
  }

  void take_values(StepAnswers& step) {
    for (std::size_t v = 0; v < std::min<std::size_t>(types_.size(), kMostVariables); ++v) {
      for (std::size_t p = 0; p < step.parts.size(); ++p) {
        if (classify_[v] != kPerNode) {
          for (const auto& [slot, count] : step.parts[p].elements) take(step, v, p, slot, 0, count);
          continue;
        }
        for (int c = 0; c < (types_[v] == kVector ? 3 : 1); ++c) take(step, v, p, 0, c, step.parts[p].nodes);
      }
    }
  }

  void take(StepAnswers& step, std::size_t v, std::size_t p, int slot, int component, int count) {
    std::vector<float> values(static_cast<std::size_t>(count) + 1);
    const int result = call(api_.get_var_by_component, static_cast<int>(v) + 1, static_cast<int>(p) + 1,
                            types_[v], slot, 0, component, values.data());
    if (result < 0) throw NotServed("values cannot be read");
    const auto last = static_cast<std::size_t>(slot != 0 ? slot : component);
    step.values[{v, p, last}] = {result, without_first(values)};
  }

  const host::EntryPoints& api_;
  Answers answers_;
  std::vector<int> types_, classify_;
};

}  // namespace

Answers served_answers(const host::EntryPoints& api, const std::filesystem::path& path) {
  return Asking(api).ask(path);
}

}  // namespace decoders
