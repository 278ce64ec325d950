// Reads stretches of arrays from files, in large reads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "layout/step_layout.h"

namespace parallel {

// A file that cannot be read. The text names it.
class FileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What was read so far.
struct ReadCounts {
  std::int64_t reads = 0;
  std::int64_t bytes = 0;        // of files, the markers between records included
  std::int64_t small_reads = 0;  // of less than 256 KiB, though the stretch had more than that
};

class FileArrays {
 public:
  // The files, by their numbers in the series.
  explicit FileArrays(std::vector<std::string> paths);
  FileArrays(const FileArrays&) = delete;
  FileArrays& operator=(const FileArrays&) = delete;
  virtual ~FileArrays();

  // Calls use(const Number* values, count) for the elements first to first + count - 1 of an array whose
  // elements are as wide as Number, in order and in pieces, in the host's byte order. Throws FileError.
  template <typename Number, typename Use>
  void read(const layout::FileArray& array, std::int64_t first, std::int64_t count, Use use) {
    static_assert(sizeof(Number) == 4 || sizeof(Number) == 8);
    start(array, first, count, sizeof(Number));
    while (const std::size_t elements = next())
      use(static_cast<const Number*>(piece()), static_cast<std::int64_t>(elements));
  }
  // The same for floats of either width: `use` takes const float* or const double*.
  template <typename Use>
  void read_floats(const layout::FileArray& array, std::int64_t first, std::int64_t count, Use use) {
    if (array.place.width == sizeof(float)) {
      read<float>(array, first, count, use);
    } else {
      read<double>(array, first, count, use);
    }
  }

  const ReadCounts& counts() const { return counts_; }
  void close();

 protected:
  // Reads `size` bytes at `offset` of the open file. For tests that make it fail.
  virtual void read_bytes(int descriptor, std::byte* to, std::size_t size, std::int64_t offset,
                          const std::string& path);

 private:
  struct Buffers;

  void start(const layout::FileArray& array, std::int64_t first, std::int64_t count, std::size_t width);
  void open(std::int32_t file);
  // Brings the next piece; returns how many elements it has.
  std::size_t next();
  const void* piece() const;
  void refill();

  std::vector<std::string> paths_;
  std::int32_t open_file_ = -1;
  int descriptor_ = -1;
  ReadCounts counts_;
  std::unique_ptr<Buffers> buffers_;

  // What is being read.
  layout::FileArray array_;
  std::int64_t at_ = 0;  // next element to be handed out
  std::int64_t end_ = 0;
  std::int64_t whole_ = 0;       // bytes of the elements asked for
  std::int64_t staged_end_ = 0;  // first element that is not in the buffer
  std::int64_t staged_offset_ = 0;
};

}  // namespace parallel
