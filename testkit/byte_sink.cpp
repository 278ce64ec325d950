#include "testkit/byte_sink.h"

#include <cerrno>
#include <limits>
#include <stdexcept>
#include <system_error>
#include <unistd.h>

namespace testkit {
namespace {

[[noreturn]] void fail(const std::string& what, const std::filesystem::path& path) {
  throw std::system_error(errno, std::generic_category(), what + " " + path.string());
}

}  // namespace

void ByteSink::write(std::string_view bytes) {
  do_write(bytes);
  offset_ += bytes.size();
}

void ByteSink::skip(std::uint64_t count) {
  if (count > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
    throw std::length_error("hole too large");
  }
  do_skip(count);
  offset_ += count;
}

void StringSink::do_write(std::string_view bytes) {
  bytes_.append(bytes);
}

void StringSink::do_skip(std::uint64_t count) {
  bytes_.append(count, '\0');
}

FileSink::FileSink(const std::filesystem::path& path) : path_(path), file_(std::fopen(path.c_str(), "wb")) {
  if (!file_) fail("cannot create", path_);
}

void FileSink::do_write(std::string_view bytes) {
  if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) fail("cannot write", path_);
}

void FileSink::do_skip(std::uint64_t count) {
  if (fseeko(file_.get(), static_cast<off_t>(count), SEEK_CUR) != 0) fail("cannot seek in", path_);
}

void FileSink::close() {
  if (std::fflush(file_.get()) != 0) fail("cannot write", path_);
  // A hole at the end of the file only exists after the length is set.
  if (ftruncate(fileno(file_.get()), static_cast<off_t>(offset())) != 0)
    fail("cannot set the length of", path_);
  if (std::fclose(file_.release()) != 0) fail("cannot close", path_);
}

std::string read_bytes(const std::filesystem::path& path) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
  if (!file) fail("cannot open", path);
  std::string bytes(std::filesystem::file_size(path), '\0');
  if (std::fread(bytes.data(), 1, bytes.size(), file.get()) != bytes.size()) fail("cannot read", path);
  return bytes;
}

void write_bytes(const std::filesystem::path& path, std::string_view bytes) {
  FileSink sink(path);
  sink.write(bytes);
  sink.close();
}

}  // namespace testkit
