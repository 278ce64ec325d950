// Reads a byte source from front to back through a buffer of fixed size, with jumps.
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

// Called every now and then with the bytes that are done and the size of the file.
using Progress = std::function<void(std::uint64_t done, std::uint64_t total)>;

class ByteReader {
 public:
  static constexpr std::size_t kBuffer = std::size_t{256} * 1024;

  explicit ByteReader(ByteSource& source, Progress progress = {})
      : source_(source), progress_(std::move(progress)), buffer_(kBuffer) {}

  std::uint64_t size() const { return source_.size(); }
  std::uint64_t position() const { return position_; }
  std::uint64_t remaining() const { return size() - position_; }

  // Goes to a place inside the file or to its end.
  void seek(std::uint64_t position) { position_ = position; }

  // The next bytes, in units of `unit` bytes: at least one, at most `most` bytes. All of the `most` bytes
  // have to lie inside the file. They stay valid until the next call.
  Bytes take(std::uint64_t most, std::size_t unit = 1);

  // A big-endian 32-bit integer anywhere in the file, none when it does not fit; the position stays.
  std::optional<std::int32_t> int32_at(std::uint64_t offset);

  // `count` bytes anywhere in the file, none when they do not fit; the position stays.
  std::optional<std::string> text_at(std::uint64_t offset, std::size_t count);

 private:
  // Makes `count` bytes at the position available.
  void fill(std::size_t count);

  ByteSource& source_;
  Progress progress_;
  std::vector<unsigned char> buffer_;
  std::uint64_t position_ = 0;
  std::uint64_t start_ = 0;  // place of the buffer's first byte in the file
  std::size_t held_ = 0;     // bytes in the buffer
  std::size_t ahead_ = 0;    // bytes that the next filling asks for
};

}  // namespace inspect
