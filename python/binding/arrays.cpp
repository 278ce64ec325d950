#include "python/binding/arrays.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "host/bounding_box.h"
#include "host/tuples.h"
#include "host/undefined_value.h"

namespace binding {
namespace {

namespace py = pybind11;

// A NumPy array over this memory, which it owns from then on; it begins at entry `first`. (Not a py::array:
// that takes the strides from a structure of NumPy whose layout differs between versions.)
template <typename Value, typename Entry>
py::array array_over(host::LargeArray<Entry> memory, std::size_t first,
                     const std::vector<py::ssize_t>& shape) {
  static_assert(sizeof(Value) == sizeof(Entry));
  using Memory = host::LargeArray<Entry>;
  auto kept = std::make_unique<Memory>(std::move(memory));
  const auto* const values = reinterpret_cast<const Value*>(kept->data() + first);
  const py::capsule release(kept.get(), [](void* held) { delete static_cast<Memory*>(held); });
  static_cast<void>(kept.release());
  return py::array_t<Value>(shape, values, release);
}

// Values on the way into a NumPy array.
struct Values {
  std::size_t width = 1;  // components
  host::LargeArray<float> memory{};
  std::size_t first = 0;                  // where they begin in there
  host::LargeArray<std::uint8_t> mask{};  // 1 where one is undefined; empty unless asked for

  std::size_t size() const { return (memory.size() - first) / width; }
};

Values values_of(std::vector<host::HostArray> components, bool with_mask) {
  const std::size_t width = components.size();
  const std::size_t count = components.front().values().size();
  Values made{.width = width};
  if (with_mask) {
    made.mask = host::LargeArray<std::uint8_t>(width * count);
    for (std::size_t component = 0; component < width; ++component) {
      const std::span<const float> values = components[component].values();
      for (std::size_t i = 0; i < count; ++i)
        made.mask[i * width + component] = host::is_undefined(values[i]);
    }
  }
  if (width == 1) {
    // The reader's array is used as it is.
    host::HostArray& array = components.front();
    host::put_values(array.values(), array.entries() + 1);
    made.memory = std::move(array).release();
    made.first = 1;
  } else {
    made.memory = host::LargeArray<float>(width * count);
    host::put_tuples(components, made.memory.data());
  }
  return made;
}

// None when the step has no such values.
std::optional<std::vector<host::HostArray>> components_of(host::Session& session, int part, int variable,
                                                          std::optional<int> component) {
  if (!component) return session.given_components(variable, part);
  auto one = session.given_values(variable, part, *component);
  if (!one) return std::nullopt;
  std::vector<host::HostArray> components;
  components.push_back(std::move(*one));
  return components;
}

}  // namespace

py::array points(Dataset& dataset, int step, int part) {
  host::LargeArray<float> xyz =
      dataset.at_step(step, [&](host::Session& session) { return session.points(part); });
  const auto count = static_cast<py::ssize_t>(xyz.size() / 3);
  return array_over<float>(std::move(xyz), 0, {count, 3});
}

py::dict cells(Dataset& dataset, int step, int part) {
  std::vector<host::ElementBlock> blocks =
      dataset.at_step(step, [&](host::Session& session) { return session.elements(part, 0); });
  py::dict by_shape;
  for (host::ElementBlock& block : blocks) {
    const auto count = static_cast<py::ssize_t>(block.size());
    by_shape[py::str(block.shape.name.data(), block.shape.name.size())] =
        array_over<int>(std::move(block.nodes), 0, {count, block.shape.nodes});
  }
  return by_shape;
}

py::object values(Dataset& dataset, int step, int part, int variable, std::optional<int> component,
                  bool with_mask) {
  std::optional<Values> read = dataset.at_step(step, [&](host::Session& session) -> std::optional<Values> {
    auto components = components_of(session, part, variable, component);
    if (!components) return std::nullopt;
    return values_of(std::move(*components), with_mask);
  });
  if (!read) return py::none();
  std::vector<py::ssize_t> shape = {static_cast<py::ssize_t>(read->size())};
  if (read->width > 1) shape.push_back(static_cast<py::ssize_t>(read->width));
  const py::array made = array_over<float>(std::move(read->memory), read->first, shape);
  if (!with_mask) return made;
  return py::make_tuple(made, array_over<bool>(std::move(read->mask), 0, shape));
}

py::object bounds(Dataset& dataset, int step, int part) {
  const std::optional<host::BoundingBox> box = dataset.at_step(
      step, [&](host::Session& session) { return host::bounding_box(session.coordinates(part)); });
  if (!box) return py::none();
  py::array_t<float> corners({2, 3});
  std::copy(box->lowest.begin(), box->lowest.end(), corners.mutable_data(0));
  std::copy(box->highest.begin(), box->highest.end(), corners.mutable_data(1));
  return corners;
}

}  // namespace binding
