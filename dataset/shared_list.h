// A copy-on-write list, so that files that are assumed to be alike can share one index.
#pragma once

#include <cstddef>
#include <vector>

#include "support/smart_ptr.h"

namespace fld {

template <class T>
class SharedList {
 public:
  const T* begin() const { return entries_ ? entries_->data() : nullptr; }
  const T* end() const { return begin() + size(); }
  size_t size() const { return entries_ ? entries_->size() : 0; }
  bool empty() const { return size() == 0; }
  const T& operator[](size_t i) const { return (*entries_)[i]; }

  // The entries for writing. Copies are not affected.
  std::vector<T>& own() {
    if (!entries_) {
      entries_ = make_smart<std::vector<T>>();
    } else if (!entries_.is_only_holder()) {
      entries_ = make_smart<std::vector<T>>(*entries_);
    }
    return *entries_;
  }

  void append(const SharedList& more) {
    if (empty()) {
      *this = more;
    } else {
      own().insert(own().end(), more.begin(), more.end());
    }
  }

 private:
  smart_ptr<std::vector<T>> entries_;
};

}  // namespace fld
