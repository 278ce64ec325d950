// A stream over bytes in memory that records the size of every read. The program is linked so that each fread
// and fread_unlocked of its objects goes through here.
#pragma once

#include <cstddef>
#include <optional>
#include <stdio.h>
#include <string>
#include <sys/types.h>
#include <vector>

class RecordingStream {
 public:
  explicit RecordingStream(std::string bytes);
  ~RecordingStream();
  RecordingStream(const RecordingStream&) = delete;
  RecordingStream& operator=(const RecordingStream&) = delete;

  // At this offset the source once returns nothing (as at the end of a file) or an error, and then continues.
  void end_once_at(std::size_t offset) { interruption_ = {offset, 0}; }
  void fail_once_at(std::size_t offset) { interruption_ = {offset, -1}; }

  FILE* stream() { return stream_; }
  // The size of each read.
  const std::vector<std::size_t>& reads() const { return reads_; }
  void record(std::size_t bytes) { reads_.push_back(bytes); }

 private:
  struct Interruption {
    std::size_t offset;
    ssize_t answer;
  };

  static ssize_t read(void* cookie, char* out, std::size_t size);
  ssize_t answer(char* out, std::size_t size);

  std::string bytes_;
  std::size_t position_ = 0;
  std::optional<Interruption> interruption_;
  std::vector<std::size_t> reads_;
  FILE* stream_ = nullptr;
};
