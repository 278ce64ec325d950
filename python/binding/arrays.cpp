#include "python/binding/arrays.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "host/bounding_box.h"
#include "host/undefined_value.h"
#include "python/binding/requests.h"

namespace binding {
namespace {

namespace py = pybind11;

// An array over the memory of `owner`, which it keeps.
template <typename Owner, typename Value>
py::array array_over(Owner owner, Value* (*data_of)(Owner&), const std::vector<py::ssize_t>& shape) {
  auto kept = std::make_unique<Owner>(std::move(owner));
  Value* data = data_of(*kept);
  const py::capsule release(kept.get(), [](void* held) { delete static_cast<Owner*>(held); });
  static_cast<void>(kept.release());
  return py::array_t<Value>(shape, data, release);
}

int* nodes_of(std::vector<int>& nodes) {
  return nodes.data();
}

// The values begin behind an entry that nobody uses.
float* values_of(host::HostArray& array) {
  return array.entries() + 1;
}

// One component, into every `width`-th place.
void spread(std::span<const float> from, float* to, std::size_t width) {
  for (const float value : from) {
    *to = value;
    to += width;
  }
}

// Notes where values are undefined, if it is asked for, and makes NaN of them.
void mark_undefined(float* values, std::size_t count, bool* mask) {
  if (mask != nullptr) std::transform(values, values + count, mask, host::is_undefined);
  std::replace_if(values, values + count, host::is_undefined, std::numeric_limits<float>::quiet_NaN());
}

py::object with_undefined_marked(py::array array, bool with_mask) {
  const auto count = static_cast<std::size_t>(array.size());
  auto* values = static_cast<float*>(array.mutable_data());
  if (!with_mask) {
    const py::gil_scoped_release without_gil;
    mark_undefined(values, count, nullptr);
  } else {
    py::array_t<bool> mask(std::vector<py::ssize_t>(array.shape(), array.shape() + array.ndim()));
    mark_undefined(values, count, mask.mutable_data());
    return py::make_tuple(array, mask);
  }
  return array;
}

// A vector's values, (n, 3); nothing where the step has none.
std::optional<py::array> vector_values(Dataset& dataset, int step, int part, int variable) {
  constexpr std::size_t kWidth = 3;
  std::optional<py::array_t<float>> made;
  for (std::size_t component = 0; component < kWidth; ++component) {
    const auto values = ask_values(dataset, step, part, variable, static_cast<int>(component));
    if (!values) return std::nullopt;
    const auto size = static_cast<py::ssize_t>(values->values().size());
    if (!made) made.emplace(std::vector<py::ssize_t>{size, static_cast<py::ssize_t>(kWidth)});
    float* to = made->mutable_data() + component;
    const py::gil_scoped_release without_gil;
    spread(values->values(), to, kWidth);
  }
  return made;
}

}  // namespace

py::array points(Dataset& dataset, int step, int part) {
  const host::Coordinates coordinates =
      dataset.at_step(step, [&](host::Session& session) { return session.coordinates(part); });
  py::array_t<float> made({static_cast<py::ssize_t>(coordinates.size()), py::ssize_t{3}});
  float* to = made.mutable_data();
  const py::gil_scoped_release without_gil;
  const std::span<const float> x = coordinates.x();
  const std::span<const float> y = coordinates.y();
  const std::span<const float> z = coordinates.z();
  for (std::size_t i = 0; i < x.size(); ++i, to += 3) {
    to[0] = x[i];
    to[1] = y[i];
    to[2] = z[i];
  }
  return made;
}

py::dict cells(Dataset& dataset, int step, int part) {
  std::vector<host::ElementBlock> blocks = dataset.at_step(step, [&](host::Session& session) {
    std::vector<host::ElementBlock> asked = session.elements(part);
    for (host::ElementBlock& block : asked) {
      for (int& node : block.nodes) --node;
    }
    return asked;
  });
  py::dict by_shape;
  for (host::ElementBlock& block : blocks) {
    const auto count = static_cast<py::ssize_t>(block.size());
    by_shape[py::str(block.shape.name.data(), block.shape.name.size())] =
        array_over(std::move(block.nodes), nodes_of, {count, block.shape.nodes});
  }
  return by_shape;
}

py::object values(Dataset& dataset, int step, int part, int variable, std::optional<int> component,
                  bool with_mask) {
  if (!component && components_of(dataset, variable) > 1) {
    const std::optional<py::array> vector = vector_values(dataset, step, part, variable);
    if (!vector) return py::none();
    return with_undefined_marked(*vector, with_mask);
  }
  std::optional<host::HostArray> one = ask_values(dataset, step, part, variable, component.value_or(0));
  if (!one) return py::none();
  const auto count = static_cast<py::ssize_t>(one->values().size());
  return with_undefined_marked(array_over(std::move(*one), values_of, {count}), with_mask);
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
