// Checks of region names, which are stored in fields of one length, padded with blanks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "inspect/findings.h"
#include "inspect/pieces.h"
#include "inspect/text_check.h"

namespace inspect {

// Splits blocks of names into names.
class NameSplitter {
 public:
  void set_length(std::int64_t length) { length_ = length; }

  // Takes the characters of a block, possibly in several pieces, and calls use(name, offset) for every
  // complete name, without trailing blanks.
  template <class Use>
  void add(const Piece& piece, Use use) {
    if (length_ <= 0) return;
    for (std::size_t i = 0; i < piece.bytes.size(); ++i) {
      if (taken_ == 0) {
        offset_ = piece.offset + i;
        name_.clear();
      }
      if (name_.size() < kMaxName) name_ += static_cast<char>(piece.bytes[i]);
      if (++taken_ < length_) continue;
      taken_ = 0;
      use(without_padding(name_), offset_);
    }
  }

 private:
  static constexpr std::size_t kMaxName = 1024;  // characters of a name that are compared

  std::int64_t length_ = 0;
  std::int64_t taken_ = 0;    // characters of the name being read
  std::uint64_t offset_ = 0;  // of its first character
  std::string name_;
};

class NameCheck {
 public:
  explicit NameCheck(Reporter& reporter) : reporter_(reporter) {}

  void set_length(std::int64_t length) { splitter_.set_length(length); }
  void add(const Piece& piece);

 private:
  void check(std::string_view name, std::uint64_t offset);

  Reporter& reporter_;
  NameSplitter splitter_;
  NameSet names_;
  bool told_full_ = false;
};

}  // namespace inspect
