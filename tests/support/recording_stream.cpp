#include "tests/support/recording_stream.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace {

RecordingStream* recording = nullptr;  // the one that is alive

void record(FILE* stream, size_t bytes) {
  if (recording != nullptr && recording->stream() == stream) recording->record(bytes);
}

}  // namespace

RecordingStream::RecordingStream(std::string bytes) : bytes_(std::move(bytes)) {
  cookie_io_functions_t functions = {};
  functions.read = &RecordingStream::read;
  stream_ = fopencookie(this, "rb", functions);
  if (stream_ == nullptr) throw std::bad_alloc();
  setvbuf(stream_, nullptr, _IONBF, 0);
  recording = this;
}

RecordingStream::~RecordingStream() {
  recording = nullptr;
  fclose(stream_);
}

ssize_t RecordingStream::read(void* cookie, char* out, size_t size) {
  return static_cast<RecordingStream*>(cookie)->answer(out, size);
}

ssize_t RecordingStream::answer(char* out, size_t size) {
  size_t end = bytes_.size();
  if (interruption_) {
    if (position_ == interruption_->offset) return std::exchange(interruption_, std::nullopt)->answer;
    end = interruption_->offset;
  }
  const size_t given = std::min(size, end - position_);
  memcpy(out, bytes_.data() + position_, given);
  position_ += given;
  return static_cast<ssize_t>(given);
}

// NOLINTBEGIN(bugprone-reserved-identifier): the names that the linker asks for
extern "C" {
size_t __real_fread(void* out, size_t size, size_t n, FILE* stream);
size_t __real_fread_unlocked(void* out, size_t size, size_t n, FILE* stream);

size_t __wrap_fread(void* out, size_t size, size_t n, FILE* stream) {
  record(stream, size * n);
  return __real_fread(out, size, n, stream);
}
size_t __wrap_fread_unlocked(void* out, size_t size, size_t n, FILE* stream) {
  record(stream, size * n);
  return __real_fread_unlocked(out, size, n, stream);
}
}
// NOLINTEND(bugprone-reserved-identifier)
