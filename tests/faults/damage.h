// The ways to damage a file, numbered from 0.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "testkit/file_writer.h"

namespace faults {

// A family of damages to one file.
class Damages {
 public:
  virtual ~Damages() = default;
  virtual std::size_t count() const = 0;
  virtual std::string damaged(std::size_t number) const = 0;   // the bytes of the damaged file
  virtual std::string describe(std::size_t number) const = 0;  // "word at byte 12 set to -1"
};

// Truncated at every byte.
class Truncations : public Damages {
 public:
  explicit Truncations(std::string bytes) : bytes_(std::move(bytes)) {}
  std::size_t count() const override { return bytes_.size(); }
  std::string damaged(std::size_t number) const override;
  std::string describe(std::size_t number) const override;

 private:
  std::string bytes_;
};

// Every single bit flipped.
class BitFlips : public Damages {
 public:
  explicit BitFlips(std::string bytes) : bytes_(std::move(bytes)) {}
  std::size_t count() const override { return bytes_.size() * 8; }
  std::string damaged(std::size_t number) const override;
  std::string describe(std::size_t number) const override;

 private:
  std::string bytes_;
};

// Big-endian words of four bytes with other values.
class WordChanges : public Damages {
 public:
  // Every word of a file whose size is a multiple of four, set to 0, 1, -1, the smallest and the largest
  // integer, the number of bytes after it, and one more and one less than that.
  static WordChanges extremes(const std::string& bytes);
  // Every record marker increased and decreased by one and four, doubled, negated and byte-swapped.
  static WordChanges markers(const std::string& bytes);

  std::size_t count() const override { return changes_.size(); }
  std::string damaged(std::size_t number) const override;
  std::string describe(std::size_t number) const override;

 private:
  struct Change {
    std::size_t offset;
    std::int32_t value;
  };
  explicit WordChanges(std::string bytes) : bytes_(std::move(bytes)) {}

  std::string bytes_;
  std::vector<Change> changes_;
};

// Every item and section removed, duplicated, and moved before the first region set.
class SectionMoves : public Damages {
 public:
  SectionMoves(std::string bytes, testkit::Places places)
      : bytes_(std::move(bytes)), places_(std::move(places)) {}
  std::size_t count() const override { return places_.all.size() * 3; }
  std::string damaged(std::size_t number) const override;
  std::string describe(std::size_t number) const override;

 private:
  std::string bytes_;
  testkit::Places places_;
};

}  // namespace faults
