#include "tests/faults/whole_session.h"

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "host/call_arrays.h"
#include "support/errors.h"
#include "tests/faults/assertion_failure.h"

namespace faults {
namespace {

constexpr int kText = 80;  // characters of the host's buffers
constexpr int kMost = 64;  // steps, parts and variables that are asked for
constexpr int kVariableSet = 2;
constexpr int kVector = 2;
constexpr int kPerNode = 4;

template <class T>
class Rows : public host::SeparateRows<T> {
 public:
  Rows(int count, int width)
      : host::SeparateRows<T>(static_cast<std::size_t>(count), static_cast<std::size_t>(width)) {}
};

// `count` numbers from `first`, or kMost evenly spaced ones of them.
std::vector<int> chosen(int first, int count) {
  std::vector<int> numbers;
  for (int i = 0; i < std::min(count, kMost); ++i) {
    numbers.push_back(first +
                      (count <= kMost ? i : static_cast<int>(std::int64_t{i} * (count - 1) / (kMost - 1))));
  }
  return numbers;
}

class Session {
  // For the functions of host/call_arrays.h.
  auto caller() {
    return [this](const auto& entry_point, auto... arguments) { return call(entry_point, arguments...); };
  }

 public:
  explicit Session(const host::EntryPoints& api) : api_(api) {}

  Ending run(const std::filesystem::path& path, const SessionOptions& options) {
    lines_ = options.lines;
    introduce(options);
    ending_.is_open = host::call_set_filenames(api_, path, caller()) == 1;
    go_through();
    if (options.ends) call(api_.exit_routine);
    return ending_;
  }

 private:
  // Calls an entry point and notes its outcome. Returns -1 after an exception, 0 if there is no result.
  template <class Result, class... Parameters, class... Arguments>
  int call(const host::EntryPoint<Result(Parameters...)>& entry_point, Arguments... arguments) {
    int result = -1;
    const std::size_t spoken = lines_ != nullptr ? lines_->length() : 0;
    try {
      if constexpr (std::is_same_v<Result, int>) {
        result = entry_point(arguments...);
        if (result < 0) {
          ending_.note({Outcome::kFailed, entry_point.name, lines_ != nullptr ? lines_->since(spoken) : ""});
        }
      } else {
        entry_point(arguments...);
        result = 0;
      }
    } catch (const fld::FLDException& exception) {
      note(Outcome::kException, std::string(entry_point.name) + ": " + exception.getMessage());
    } catch (const std::bad_alloc&) {
      note(Outcome::kOutOfMemory, entry_point.name);
    } catch (const AssertionFailure& failure) {
      note(Outcome::kAssertion, failure.what());
    }
    mix(result);
    return result;
  }

  // The same for a count, which is 0 after a failure.
  template <class... Parameters, class... Arguments>
  int count(const host::EntryPoint<int(Parameters...)>& entry_point, Arguments... arguments) {
    return std::max(0, call(entry_point, arguments...));
  }

  void mix(std::uint64_t value) { ending_.digest = (ending_.digest ^ value) * 0x100000001b3U; }
  void mix(int value) { mix(static_cast<std::uint64_t>(static_cast<unsigned>(value))); }
  template <class T>
  void mix(const T* values, int count) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(values);
    for (std::size_t i = 0; i < sizeof(T) * static_cast<std::size_t>(count); ++i)
      mix(std::uint64_t{bytes[i]});
  }
  template <class T>
  void mix(const host::SeparateRows<T>& rows) {
    for (std::size_t i = 0; i < rows.count(); ++i) mix(rows[i], static_cast<int>(rows.width()));
  }

  void note(Outcome outcome, const std::string& detail) {
    ending_.note({.outcome = outcome, .detail = detail, .lines = ""});
  }
  void broken(const std::string& what) { note(Outcome::kBrokenPromise, what); }

  void introduce(const SessionOptions& options) {
    std::vector<char> description(255);
    std::vector<char> name(20);
    std::vector<char> label1(kText);
    std::vector<char> label2(kText);
    int fields = 0;
    call(api_.get_name_of_reader, name.data(), &fields);
    call(api_.get_reader_release, name.data());
    call(api_.get_reader_version, name.data());
    call(api_.get_reader_descrip, description.data());
    call(api_.set_filename_button_labels, label1.data(), label2.data());
    call(api_.set_server_number, 1, 1);
    int toggles = 0;
    int pulldowns = 0;
    call(api_.get_extra_gui_numbers, &toggles, &pulldowns, &fields);
    std::vector<int> choice = {options.simplify_sequential ? 1 : 0, options.group_parts ? 1 : 0};
    call(api_.set_extra_gui_data, choice.data(), nullptr, nullptr);
    int request = 0;
    int values = 0;
    float undefined = -1.0e20F;
    call(api_.get_extra_data, &request, nullptr, &values, nullptr, nullptr, nullptr);
    call(api_.get_extra_data, &request, nullptr, &values, nullptr, nullptr, &undefined);
  }

  void go_through() {
    const int sets = count(api_.get_number_of_timesets);
    for (int set = 1; set <= sets; ++set) {
      std::vector<char> text(kText);
      call(api_.get_timeset_description, set, text.data());
      const int steps = count(api_.get_num_of_time_steps, set);
      std::vector<float> times(static_cast<std::size_t>(steps));
      call(api_.get_sol_times, set, times.data());
      mix(times.data(), steps);
    }
    call(api_.get_changing_geometry_status);
    const int geometry_set = call(api_.get_geom_timeset_number);
    const int geometry_steps = count(api_.get_num_of_time_steps, geometry_set);
    for (const int step : chosen(0, count(api_.get_num_of_time_steps, kVariableSet))) {
      call(api_.set_time_set_and_step, geometry_set, std::min(step, geometry_steps - 1));
      call(api_.set_time_set_and_step, kVariableSet, step);
      take_parts();
      take_variables();
    }
    take_metadata();
  }

  void take_parts() {
    const int parts = count(api_.get_number_of_model_parts);
    parts_ = std::make_unique<PartArrays>(static_cast<std::size_t>(parts));
    parts_->fill(api_, caller());
    mix(parts_->nodes.data(), parts);
    mix(parts_->descriptions);
    mix(parts_->elements);
    for (const int part : chosen(1, parts)) take_part(part);
    call(api_.stop_part_building);
  }

  void take_part(int part) {
    const int nodes = nodes_of(part);
    if (nodes < 0) return broken("a part with a negative number of nodes");
    Rows<float> coordinates(3, nodes + 1);
    call(api_.get_part_coords, part, coordinates.rows());
    mix(coordinates);
    std::vector<int> ids(static_cast<std::size_t>(nodes) + 1);
    call(api_.get_part_node_ids, part, ids.data());
    for (int slot = 0; slot < host::kElementSlots; ++slot) take_elements(part, slot);
  }

  void take_elements(int part, int slot) {
    const int count = elements_of(part, slot);
    if (count < 0) return broken("a part with a negative number of elements");
    if (count == 0) return;
    const host::ElementShape* shape = host::shape_of_slot(slot);
    if (shape == nullptr) return broken("elements in a slot of no shape");
    Rows<int> rows(count, shape->nodes);
    std::vector<int> ids(static_cast<std::size_t>(count) + 1);
    call(api_.get_part_element_ids_by_type, part, slot, ids.data());
    if (call(api_.get_part_elements_by_type, part, slot, rows.rows()) < 0) return;
    mix(rows);
    // Missing nodes are given as node 1, even if the part has no nodes.
    const auto nodes = static_cast<unsigned>(std::max(1, nodes_of(part)));
    for (std::size_t e = 0; e < rows.count(); ++e) {
      for (std::size_t i = 0; i < rows.width(); ++i) {
        if (static_cast<unsigned>(rows[e][i]) - 1U >= nodes) return broken("a node number of no node");
      }
    }
  }

  void take_variables() {
    const int variables = count(api_.get_number_of_variables);
    host::VariableArrays<host::SeparateStorage> arrays(static_cast<std::size_t>(variables));
    arrays.fill(api_, caller());
    mix(arrays.descriptions);
    mix(arrays.types.data(), variables);
    for (const int variable : chosen(1, variables)) {
      const auto i = static_cast<std::size_t>(variable) - 1;
      for (const int part : chosen(1, static_cast<int>(parts_->nodes.size()))) {
        if (arrays.classify[i] == kPerNode) {
          for (int component = 0; component < (arrays.types[i] == kVector ? 3 : 1); ++component) {
            take_values(variable, part, arrays.types[i], 0, component, nodes_of(part));
          }
        } else {
          for (int slot = 0; slot < host::kElementSlots; ++slot) {
            take_values(variable, part, arrays.types[i], slot, 0, elements_of(part, slot));
          }
        }
      }
    }
  }

  void take_values(int variable, int part, int type, int slot, int component, int count) {
    if (count <= 0) return;
    std::vector<float> values(static_cast<std::size_t>(count) + 1);
    call(api_.get_var_by_component, variable, part, type, slot, 0, component, values.data());
    mix(values.data(), count + 1);
  }

  void take_metadata() {
    int size = 0;
    if (call(api_.get_metadata, &size, nullptr) < 0) return;
    if (size < 0) return broken("a block of part groups of negative length");
    std::vector<char> text(static_cast<std::size_t>(size) + 1);
    call(api_.get_metadata, &size, text.data());
    mix(text.data(), size);
  }

  int nodes_of(int part) const { return parts_->nodes[static_cast<std::size_t>(part) - 1]; }
  int elements_of(int part, int slot) const {
    return parts_->elements[static_cast<std::size_t>(part) - 1][slot];
  }

  using PartArrays = host::PartArrays<host::SeparateStorage>;

  const host::EntryPoints& api_;
  const SpokenLines* lines_ = nullptr;
  Ending ending_;
  std::unique_ptr<PartArrays> parts_;
};

}  // namespace

const char* name_of(Outcome outcome) {
  static constexpr std::array<const char*, kOutcomes> kNames = {
      "served", "failure result", "exception", "out of memory", "assertion", "broken promise"};
  return kNames.at(static_cast<std::size_t>(outcome));
}

void Ending::note(CallEnding call) {
  if (call.outcome > outcome) {
    outcome = call.outcome;
    detail = call.detail;
  }
  unserved.insert(std::move(call));
}

Ending whole_session(const host::EntryPoints& api, const std::filesystem::path& path,
                     const SessionOptions& options) {
  return Session(api).run(path, options);
}

}  // namespace faults
