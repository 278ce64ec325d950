// Where the bytes of a file come from.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>

namespace inspect {

using Bytes = std::span<const unsigned char>;

// The file cannot be opened or read; what() is the reason.
class ReadError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class ByteSource {
 public:
  virtual ~ByteSource() = default;
  ByteSource() = default;
  ByteSource(const ByteSource&) = delete;
  ByteSource& operator=(const ByteSource&) = delete;

  virtual std::uint64_t size() const = 0;
  // Fills `out` with the bytes at `offset`, which must be inside the file. Throws ReadError.
  virtual void read(std::uint64_t offset, std::span<unsigned char> out) = 0;
};

// A regular file. Opening anything else fails at once, so a pipe never blocks.
class FileSource : public ByteSource {
 public:
  // Throws ReadError.
  explicit FileSource(const std::filesystem::path& path);
  ~FileSource() override;

  std::uint64_t size() const override { return size_; }
  void read(std::uint64_t offset, std::span<unsigned char> out) override;

 private:
  int descriptor_;
  std::uint64_t size_ = 0;
};

// Bytes in memory.
class StringSource : public ByteSource {
 public:
  explicit StringSource(std::string bytes) : bytes_(std::move(bytes)) {}

  std::uint64_t size() const override { return bytes_.size(); }
  void read(std::uint64_t offset, std::span<unsigned char> out) override;

 private:
  std::string bytes_;
};

}  // namespace inspect
