// Output of the writer: a file or a string in memory.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace testkit {

class ByteSink {
 public:
  virtual ~ByteSink() = default;
  ByteSink() = default;
  ByteSink(const ByteSink&) = delete;
  ByteSink& operator=(const ByteSink&) = delete;

  // Appends bytes at the end.
  void write(std::string_view bytes);
  // Appends `count` zero bytes; in a file they become a hole.
  void skip(std::uint64_t count);
  // Number of bytes so far.
  std::uint64_t offset() const { return offset_; }

 private:
  virtual void do_write(std::string_view bytes) = 0;
  virtual void do_skip(std::uint64_t count) = 0;

  std::uint64_t offset_ = 0;
};

class StringSink : public ByteSink {
 public:
  const std::string& bytes() const { return bytes_; }
  std::string take() { return std::move(bytes_); }

 private:
  void do_write(std::string_view bytes) override;
  void do_skip(std::uint64_t count) override;

  std::string bytes_;
};

// Creates or replaces a file. Throws std::system_error.
class FileSink : public ByteSink {
 public:
  explicit FileSink(const std::filesystem::path& path);
  // Closes the file if it is open, ignoring errors; call close() to get them.
  ~FileSink() override = default;
  // Flushes, sets the length of the file and closes it.
  void close();

 private:
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  void do_write(std::string_view bytes) override;
  void do_skip(std::uint64_t count) override;

  std::filesystem::path path_;
  std::unique_ptr<std::FILE, Closer> file_;
};

// Whole files at once.
std::string read_bytes(const std::filesystem::path& path);
void write_bytes(const std::filesystem::path& path, std::string_view bytes);

}  // namespace testkit
