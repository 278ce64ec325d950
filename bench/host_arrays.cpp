#include "bench/host_arrays.h"

#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>

#include "host/call_arrays.h"

namespace bench {

namespace {

constexpr int kDone = 1;
constexpr int kScalarType = 1;

void check(bool is_good, const char* what) {
  if (!is_good) throw std::runtime_error(std::string("the reader did not answer: ") + what);
}

std::size_t width_of(int slot) {
  const host::ElementShape* shape = host::shape_of_slot(slot);
  check(shape != nullptr, "a shape that is known");
  return static_cast<std::size_t>(shape->nodes);
}

}  // namespace

HostCoordinates new_coordinates(std::size_t nodes) {
  HostCoordinates axes;
  for (auto& axis : axes) axis = std::make_unique_for_overwrite<float[]>(nodes + 1);
  return axes;
}

HostRows::HostRows(std::size_t row_count, std::size_t row_width)
    : count(row_count),
      width(row_width),
      block(std::make_unique_for_overwrite<int[]>(row_count * row_width)),
      rows(std::make_unique_for_overwrite<int*[]>(row_count)) {
  for (std::size_t i = 0; i < count; ++i) rows[i] = block.get() + i * width;
}

Host::Host(const std::filesystem::path& plugin) : library_(plugin) {
  const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
  if (nowhere >= 0) dup2(nowhere, STDERR_FILENO);
}

void Host::simplify_series() {
  std::array<int, 2> toggles = {1, 0};
  entry_points().set_extra_gui_data(toggles.data(), nullptr, nullptr);
}

void Host::open(const std::filesystem::path& file) {
  check(host::call_set_filenames(entry_points(), file, host::call_directly) == kDone, "opening");
}

void Host::select_step(int set, int step) {
  entry_points().set_time_set_and_step(set, step);
}

std::vector<PartInfo> Host::parts() const {
  const auto count = static_cast<std::size_t>(entry_points().get_number_of_model_parts());
  host::PartArrays<host::PooledStorage> arrays(count);
  check(arrays.fill(entry_points(), host::call_directly) == kDone, "build information");
  std::vector<PartInfo> parts(count);
  for (std::size_t i = 0; i < count; ++i) {
    parts[i] = {.number = arrays.ids[i],
                .name = arrays.descriptions.text(i),
                .nodes = static_cast<std::size_t>(arrays.nodes[i]),
                .elements = {}};
    for (int slot = 0; slot < host::kElementSlots; ++slot) {
      const int elements = arrays.elements[i][slot];
      if (elements > 0) parts[i].elements[slot] = static_cast<std::size_t>(elements);
    }
  }
  return parts;
}

HostCoordinates Host::coordinates(const PartInfo& part) const {
  HostCoordinates axes = new_coordinates(part.nodes);
  std::array<float*, 3> rows = {axes[0].get(), axes[1].get(), axes[2].get()};
  check(entry_points().get_part_coords(part.number, rows.data()) == kDone, "coordinates");
  return axes;
}

void Host::fill_rows(const PartInfo& part, int slot, const HostRows& rows) const {
  check(entry_points().get_part_elements_by_type(part.number, slot, rows.rows.get()) == kDone, "elements");
}

std::vector<HostRows> Host::elements(const PartInfo& part) const {
  std::vector<HostRows> shapes;
  for (const auto& [slot, count] : part.elements) {
    shapes.emplace_back(count, width_of(slot));
    fill_rows(part, slot, shapes.back());
  }
  return shapes;
}

HostValues Host::scalar(const PartInfo& part, int number) const {
  auto values = std::make_unique_for_overwrite<float[]>(part.nodes + 1);
  check(entry_points().get_var_by_component(number, part.number, kScalarType, 0, 0, 0, values.get()) == kDone,
        "values");
  return values;
}

TakenPart Host::take_all(const PartInfo& part) const {
  return {coordinates(part), elements(part), scalar(part)};
}

PartInfo whole_mesh(const Host& host) {
  const auto parts = host.parts();
  check(!parts.empty(), "any part");
  return parts.back();
}

void run_session(const std::filesystem::path& plugin, const std::filesystem::path& file, Trial& trial) {
  Host host(plugin);
  trial.begin();
  host.open(file);
  const PartInfo part = whole_mesh(host);
  trial.leave_out(0);
  const std::size_t per_node = (part.nodes + 1) * sizeof(float);
  const HostCoordinates axes = host.coordinates(part);
  trial.leave_out(3 * per_node);
  std::size_t row_bytes = 0;
  const std::vector<HostRows> shapes = host.elements(part);
  for (const HostRows& rows : shapes) row_bytes += rows.bytes();
  trial.leave_out(row_bytes);
  const HostValues values = host.scalar(part);
  trial.leave_out(per_node);
  trial.end();
}

}  // namespace bench
