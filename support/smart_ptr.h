// The reference-counted owning pointer that holds the dataset, the geometry and their parts. Counting is not
// atomic: the host calls the reader from one thread at a time.
#pragma once

#include <memory>
#include <utility>

namespace fld {

template <class T>
class smart_ptr {
 public:
  smart_ptr() = default;

  // Takes over a new object. When the count cannot be allocated the object is destroyed and the error goes
  // on.
  explicit smart_ptr(T* object) {
    std::unique_ptr<T> guard(object);
    if (object != nullptr) count_ = new int(1);
    object_ = guard.release();
  }

  smart_ptr(const smart_ptr& other) noexcept : object_(other.object_), count_(other.count_) {
    if (count_ != nullptr) ++*count_;
  }
  smart_ptr(smart_ptr&& other) noexcept
      : object_(std::exchange(other.object_, nullptr)), count_(std::exchange(other.count_, nullptr)) {}

  // One assignment for both kinds; what was held before is released last.
  smart_ptr& operator=(smart_ptr other) noexcept {
    std::swap(object_, other.object_);
    std::swap(count_, other.count_);
    return *this;
  }

  ~smart_ptr() { dec_ref(); }

  // Gives up this holder's share; the last holder destroys the object. The pointer is empty afterwards.
  void dec_ref() noexcept {
    T* object = std::exchange(object_, nullptr);
    int* count = std::exchange(count_, nullptr);
    if (count == nullptr || --*count > 0) return;
    delete count;
    delete object;
  }

  T* get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  T* object_ = nullptr;
  int* count_ = nullptr;
};

}  // namespace fld
