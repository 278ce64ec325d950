// Reads a byte source sequentially through a buffer of fixed size, with seeks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "inspect/byte_source.h"

namespace inspect {

// Called regularly with the bytes that are done and the size of the file.
using Progress = std::function<void(std::uint64_t done, std::uint64_t total)>;

class ByteReader {
 public:
  static constexpr std::size_t kBuffer = std::size_t{256} * 1024;

  explicit ByteReader(ByteSource& source, Progress progress = {})
      : source_(source), progress_(std::move(progress)), buffer_(kBuffer) {}

  std::uint64_t size() const { return source_.size(); }
  std::uint64_t position() const { return position_; }
  std::uint64_t remaining() const { return size() - position_; }

  // Moves to an offset up to the end of the file.
  void seek(std::uint64_t position) { position_ = position; }

  // The next bytes, a multiple of `unit`: at least one unit, at most `most` bytes, all of which must be
  // inside the file. Valid until the next call.
  Bytes take(std::uint64_t most, std::size_t unit = 1);

  // The big-endian 32-bit integer at an offset; none if it is not inside the file. Does not move the
  // position.
  std::optional<std::int32_t> int32_at(std::uint64_t offset);

  // The `count` bytes at an offset; none if they are not inside the file. Does not move the position.
  std::optional<std::string> text_at(std::uint64_t offset, std::size_t count);

 private:
  // Reads at least `count` bytes at the position into the buffer.
  void fill(std::size_t count);

  ByteSource& source_;
  Progress progress_;
  std::vector<unsigned char> buffer_;
  std::uint64_t position_ = 0;
  std::uint64_t start_ = 0;  // offset of the buffer's first byte in the file
  std::size_t held_ = 0;     // bytes in the buffer
  std::size_t ahead_ = 0;    // bytes to read at the next fill
};

}  // namespace inspect
