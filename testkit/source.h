// The values of a data block: a list in memory, a function that computes them in pieces (for arrays larger
// than memory), or a hole of zeros.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <span>
#include <stdexcept>
#include <utility>
#include <vector>

namespace testkit {

template <class T>
class Source {
 public:
  // Fills `out` with the values first, first + 1, ... of the whole array. Called in ascending order.
  using Fill = std::function<void(std::int64_t first, std::span<T> out)>;

  Source() = default;
  Source(std::vector<T> values) : values_(std::move(values)), size_(-1) {}
  Source(std::initializer_list<T> values) : values_(values), size_(-1) {}
  Source(std::int64_t count, Fill fill) : fill_(std::move(fill)), size_(count) {}
  // `count` zeros, written as a hole.
  static Source hole(std::int64_t count) {
    Source source;
    source.size_ = count;
    return source;
  }

  std::int64_t size() const { return is_list() ? static_cast<std::int64_t>(values_.size()) : size_; }
  bool is_list() const { return size_ < 0; }
  bool is_hole() const { return !is_list() && !fill_; }

  // The list itself. Throws std::logic_error if the values come from a function.
  std::vector<T>& values() {
    require_list();
    return values_;
  }
  const std::vector<T>& values() const {
    require_list();
    return values_;
  }

  void read(std::int64_t first, std::span<T> out) const {
    if (is_list()) {
      std::copy_n(values_.begin() + first, out.size(), out.begin());
    } else if (fill_) {
      fill_(first, out);
    } else {
      std::fill(out.begin(), out.end(), T{});
    }
  }

 private:
  void require_list() const {
    if (!is_list()) throw std::logic_error("these values are made by a function and are no list");
  }

  std::vector<T> values_;
  Fill fill_;
  std::int64_t size_ = -1;  // of a function or hole; -1 for a list
};

using Ints = Source<std::int32_t>;
using Longs = Source<std::int64_t>;
using Reals = Source<double>;

// The concatenated values of the sources.
template <class T>
Source<T> concatenate(std::vector<Source<T>> parts) {
  std::int64_t total = 0;
  for (const auto& part : parts) total += part.size();
  auto shared = std::make_shared<const std::vector<Source<T>>>(std::move(parts));
  return Source<T>(total, [shared](std::int64_t first, std::span<T> out) {
    for (const auto& part : *shared) {
      if (out.empty()) return;
      if (first >= part.size()) {
        first -= part.size();
        continue;
      }
      const auto count = static_cast<std::size_t>(
          std::min<std::int64_t>(part.size() - first, static_cast<std::int64_t>(out.size())));
      part.read(first, out.first(count));
      out = out.subspan(count);
      first = 0;
    }
  });
}

}  // namespace testkit
