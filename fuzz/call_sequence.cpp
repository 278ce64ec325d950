#include "fuzz/call_sequence.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <memory>
#include <string>

#include "fuzz/trial.h"
#include "host/call_arrays.h"

namespace fuzz {
namespace {

constexpr int kText = 80;          // characters of the host's buffers
constexpr int kIdentityText = 20;  // of names and versions
constexpr int kDescription = 255;  // of the reader's description
constexpr int kToggleTitle = 40;   // of an option's title
constexpr int kOddFrom = 0xe0;     // bytes from here on choose an out-of-range number
constexpr int kLargestRow = 8;     // nodes of the largest element

constexpr int kFarAway[] = {-1,
                            0,
                            299,
                            300,
                            301,
                            0x10000,
                            std::numeric_limits<int>::max(),
                            -1000,
                            65535,
                            100000,
                            std::numeric_limits<int>::min()};

// Exactly `count` values.
template <class T>
class Array {
 public:
  explicit Array(int count, T value = T()) : values_(new T[static_cast<std::size_t>(count)]) {
    std::fill_n(values_.get(), count, value);
  }
  T* data() { return values_.get(); }
  T& operator[](int i) { return values_[static_cast<std::size_t>(i)]; }

 private:
  std::unique_ptr<T[]> values_;
};

template <class T>
class Rows : public host::SeparateRows<T> {
 public:
  Rows(int count, int width, T value = T())
      : host::SeparateRows<T>(static_cast<std::size_t>(count), static_cast<std::size_t>(width), value) {}
  T* operator[](int i) { return host::SeparateRows<T>::operator[](static_cast<std::size_t>(i)); }
};

}  // namespace

const CallSequence::Call CallSequence::kCalls[] = {&CallSequence::open,
                                                   &CallSequence::exit,
                                                   &CallSequence::set_step,
                                                   &CallSequence::ask_times,
                                                   &CallSequence::ask_parts,
                                                   &CallSequence::ask_coordinates,
                                                   &CallSequence::ask_elements,
                                                   &CallSequence::ask_variables,
                                                   &CallSequence::ask_values,
                                                   &CallSequence::ask_metadata,
                                                   &CallSequence::set_options,
                                                   &CallSequence::exchange_undefined_value,
                                                   &CallSequence::ask_identity,
                                                   &CallSequence::ask_texts,
                                                   &CallSequence::ask_fixed_answers,
                                                   &CallSequence::ask_about_blocks,
                                                   &CallSequence::change_file};

void CallSequence::run() {
  while (!choices_.is_empty()) {
    const Call call = kCalls[choices_.byte() % std::size(kCalls)];
    ends_as_documented([&] { (this->*call)(); });
  }
  api_.exit_routine();
}

int CallSequence::number_up_to(int count) {
  const int choice = choices_.byte();
  if (choice >= kOddFrom) return kFarAway[static_cast<std::size_t>(choice - kOddFrom) % std::size(kFarAway)];
  return choice % (count + 1);
}

void CallSequence::open() {
  const int choice = choices_.byte();
  const auto& paths = files_.paths();
  std::string first = paths[static_cast<std::size_t>(choice) % paths.size()].string();
  std::string second = "second";
  char* const second_name = choice % 3 == 0 ? nullptr : second.data();
  char* const first_name = choice == 0xff ? nullptr : first.data();
  api_.set_filenames(first_name, second_name, nullptr, choice % 2);
}

void CallSequence::change_file() {
  files_.change(choices_.byte());
}

void CallSequence::exit() {
  api_.exit_routine();
}

void CallSequence::set_step() {
  const int set = number_up_to(3);
  api_.set_time_set_and_step(set, number_up_to(4));
}

void CallSequence::ask_times() {
  const int set = number_up_to(3);
  Array<float> times(api_.get_num_of_time_steps(set));
  api_.get_sol_times(set, times.data());
  api_.get_changing_geometry_status();
  api_.get_number_of_timesets();
  api_.get_geom_timeset_number();
}

std::vector<CallSequence::PartSize> CallSequence::build_parts() {
  const auto parts = static_cast<std::size_t>(api_.get_number_of_model_parts());
  host::PartArrays<host::SeparateStorage> arrays(parts);
  arrays.fill(api_, host::call_directly);
  std::vector<PartSize> sizes;
  for (std::size_t part = 0; part < parts; ++part) {
    const int* counts = arrays.elements[part];
    sizes.push_back({arrays.nodes[part], {counts, counts + host::kElementSlots}});
  }
  return sizes;
}

void CallSequence::ask_parts() {
  build_parts();
  if (choices_.byte() % 2 == 0) api_.stop_part_building();
}

CallSequence::PartSize CallSequence::size_of(int part) {
  const std::vector<PartSize> sizes = build_parts();
  const auto index = static_cast<std::size_t>(part) - 1;
  return part >= 1 && index < sizes.size() ? sizes[index] : PartSize{};
}

int CallSequence::elements_of(const PartSize& size, int slot) {
  const auto index = static_cast<std::size_t>(slot);
  return slot >= 0 && index < size.elements.size() ? size.elements[index] : 0;
}

void CallSequence::ask_coordinates() {
  const int part = number_up_to(api_.get_number_of_model_parts() + 1);
  const int nodes = size_of(part).nodes;
  Rows<float> axes(3, nodes + 1, std::numeric_limits<float>::quiet_NaN());
  api_.get_part_coords(part, axes.rows());
  for (int i = 1; i <= nodes; ++i) {
    for (int axis = 0; axis < 3; ++axis) {
      if (std::isnan(axes[axis][i])) report_broken_promise("a coordinate that was not written");
    }
  }
  Array<int> ids(nodes + 1);
  api_.get_part_node_ids(part, ids.data());
}

void CallSequence::ask_elements() {
  const int part = number_up_to(api_.get_number_of_model_parts() + 1);
  const int slot = number_up_to(host::kElementSlots);
  const PartSize size = size_of(part);
  const int count = elements_of(size, slot);
  const host::ElementShape* shape = host::shape_of_slot(slot);
  const int width = shape != nullptr ? shape->nodes : kLargestRow;
  Rows<int> rows(count, width);
  if (api_.get_part_elements_by_type(part, slot, rows.rows()) >= 0) {
    // Missing nodes are given as node 1, even if the part has no nodes.
    const int nodes = std::max(1, size.nodes);
    for (int e = 0; e < count; ++e) {
      for (int i = 0; i < width; ++i) {
        if (rows[e][i] < 1 || rows[e][i] > nodes) report_broken_promise("a node number of no node");
      }
    }
  }
  Array<int> ids(count + 1);
  api_.get_part_element_ids_by_type(part, slot, ids.data());
}

void CallSequence::ask_variables() {
  host::VariableArrays<host::SeparateStorage> arrays(
      static_cast<std::size_t>(api_.get_number_of_variables()));
  arrays.fill(api_, host::call_directly);
}

void CallSequence::ask_values() {
  const int variables = api_.get_number_of_variables();
  const int variable = number_up_to(variables + 1);
  const int part = number_up_to(api_.get_number_of_model_parts() + 1);
  const int slot = number_up_to(host::kElementSlots);
  const int type = number_up_to(2);
  const int component = number_up_to(3);
  const int imaginary = choices_.byte() == 1 ? 1 : 0;
  const PartSize size = size_of(part);
  const bool per_node = variable >= 1 && variable < variables;
  const bool per_element = variable == variables;
  const int count = per_node ? size.nodes : per_element ? elements_of(size, slot) : 0;
  Array<float> values(count + 1);
  api_.get_var_by_component(variable, part, type, slot, imaginary, component, values.data());
}

void CallSequence::ask_metadata() {
  int size = 0;
  api_.get_metadata(&size, nullptr);
  Array<char> text(size + 1);
  api_.get_metadata(&size, text.data());
}

void CallSequence::set_options() {
  Array<int> toggles(2);
  const int choice = choices_.byte();
  toggles[0] = choice & 1;
  toggles[1] = choice >> 1 & 3;
  api_.set_extra_gui_data(toggles.data(), nullptr, nullptr);
  api_.set_server_number(choice, -choice);
}

void CallSequence::exchange_undefined_value() {
  const int choice = choices_.byte();
  int request = choice & 1;
  int count = 0;
  float value = -static_cast<float>(choice);
  api_.get_extra_data(&request, nullptr, &count, nullptr, nullptr, (choice & 2) != 0 ? nullptr : &value);
}

void CallSequence::ask_identity() {
  Array<char> text(kIdentityText);
  int number = 0;
  api_.get_name_of_reader(text.data(), &number);
  api_.get_reader_release(text.data());
  api_.get_reader_version(text.data());
  Array<char> description(kDescription);
  api_.get_reader_descrip(description.data());
  Array<char> label(kText);
  api_.set_filename_button_labels(label.data(), nullptr);
  int toggles = 0;
  int pulldowns = 0;
  api_.get_extra_gui_numbers(&toggles, &pulldowns, &number);
  Rows<char> titles(toggles, kToggleTitle);
  Array<int> defaults(toggles);
  api_.get_extra_gui_defaults(titles.rows(), defaults.data(), nullptr, nullptr, nullptr, nullptr, nullptr,
                              nullptr);
}

void CallSequence::ask_texts() {
  Array<char> text(kText);
  api_.get_timeset_description(number_up_to(3), text.data());
  Array<char> line1(kText);
  Array<char> line2(kText);
  api_.get_descrip_lines(number_up_to(3), number_up_to(5), 0, line1.data(), line2.data());
}

void CallSequence::ask_fixed_answers() {
  const int a = number_up_to(5);
  const int b = number_up_to(5);
  Array<float> floats(6);
  Array<int> ints(host::kElementSlots);
  api_.get_constant_val(a, b);
  api_.get_var_value_at_specific(a, b, a, b, a, floats.data(), 0);
  api_.get_model_extents(floats.data());
  api_.get_node_label_status();
  api_.get_element_label_status();
  api_.get_number_of_files_in_dataset();
  api_.get_dataset_query_file_info(nullptr);
  api_.get_maxsize_info(ints.data(), nullptr, nullptr);
  api_.get_number_of_material_sets();
  api_.get_matf_set_info(nullptr, nullptr);
  api_.get_number_of_materials(a);
  api_.get_matf_var_info(a, nullptr, nullptr);
  api_.size_matf_data(a, b, a, b, ints.data());
  api_.load_matf_data(a, b, a, b, nullptr, nullptr);
  api_.bkup(nullptr, a);
  api_.get_uns_failed_params(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
}

void CallSequence::ask_about_blocks() {
  const int part = number_up_to(5);
  const int slot = number_up_to(host::kElementSlots);
  Array<int> ints(host::kElementSlots);
  api_.get_block_coords_by_component(part, slot, nullptr);
  api_.get_block_iblanking(part, nullptr);
  api_.get_block_ghost_flags(part, nullptr);
  api_.get_ghosts_in_block_flag(part);
  api_.get_ghosts_in_model_flag();
  api_.get_border_availability(part, ints.data());
  api_.get_border_elements_by_type(part, slot, nullptr, nullptr, nullptr);
  api_.get_nsided_conn(part, nullptr);
  api_.get_nfaced_nodes_per_face(part, nullptr);
  api_.get_nfaced_conn(part, nullptr);
}

}  // namespace fuzz
