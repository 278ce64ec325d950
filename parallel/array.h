// A large array whose elements are not cleared before they are written.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "support/huge_pages.h"

namespace parallel {

template <typename Value>
class Array {
 public:
  Array() = default;
  explicit Array(std::int64_t size)
      : values_(size > 0 ? std::make_unique_for_overwrite<Value[]>(static_cast<std::size_t>(size)) : nullptr),
        size_(size) {
    fld::take_huge_pages(values_.get(), span().size_bytes());
  }

  std::int64_t size() const { return size_; }
  Value* data() { return values_.get(); }
  const Value* data() const { return values_.get(); }
  Value& operator[](std::int64_t i) { return values_[static_cast<std::size_t>(i)]; }
  const Value& operator[](std::int64_t i) const { return values_[static_cast<std::size_t>(i)]; }
  std::span<Value> span() { return {data(), static_cast<std::size_t>(size_)}; }
  std::span<const Value> span() const { return {data(), static_cast<std::size_t>(size_)}; }

  // Hands the memory over to who will delete[] it.
  Value* release() {
    size_ = 0;
    return values_.release();
  }

 private:
  std::unique_ptr<Value[]> values_;
  std::int64_t size_ = 0;
};

}  // namespace parallel
