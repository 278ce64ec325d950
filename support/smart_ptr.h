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

  // Constructs an object from the arguments and returns a pointer to it.
  template <class U, class... Arguments>
  friend smart_ptr<U> make_smart(Arguments&&... arguments);

  smart_ptr(const smart_ptr& other) noexcept : shared_(other.shared_) {
    if (shared_ != nullptr) ++shared_->holders;
  }
  smart_ptr(smart_ptr&& other) noexcept : shared_(std::exchange(other.shared_, nullptr)) {}

  // Copy and move assignment. The old object is released last.
  smart_ptr& operator=(smart_ptr other) noexcept {
    std::swap(shared_, other.shared_);
    return *this;
  }

  ~smart_ptr() { dec_ref(); }

  // Drops this reference and leaves the pointer empty. The last reference destroys the object.
  void dec_ref() noexcept {
    Shared* const shared = std::exchange(shared_, nullptr);
    if (shared != nullptr && --shared->holders == 0) delete shared;
  }

  T* get() const { return shared_ != nullptr ? &shared_->object : nullptr; }
  T* operator->() const { return &shared_->object; }
  T& operator*() const { return shared_->object; }
  explicit operator bool() const { return shared_ != nullptr; }

  // Whether this is the only reference to an object.
  bool is_only_holder() const { return shared_ != nullptr && shared_->holders == 1; }

 private:
  // Object and counter share one allocation, because a dataset may have very many small regions.
  struct Shared {
    template <class... Arguments>
    explicit Shared(Arguments&&... arguments) : object(std::forward<Arguments>(arguments)...) {}

    T object;
    int holders = 1;
  };

  explicit smart_ptr(Shared* shared) : shared_(shared) {}

  Shared* shared_ = nullptr;
};

template <class T, class... Arguments>
smart_ptr<T> make_smart(Arguments&&... arguments) {
  using Shared = typename smart_ptr<T>::Shared;
  return smart_ptr<T>(std::make_unique<Shared>(std::forward<Arguments>(arguments)...).release());
}

}  // namespace fld
