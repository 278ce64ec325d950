#include "fuzz/trial.h"

#include <algorithm>
#include <cstdlib>
#include <stdio.h>
#include <string>

#include "tests/faults/documented.h"

namespace fuzz {
namespace {

constexpr std::size_t kFixedMemory = std::size_t{16} << 20;
constexpr std::size_t kMemoryPerByte = 8;
constexpr std::size_t kKeptText = std::size_t{1} << 20;  // of the reader's lines; older ones are dropped

std::string& lines() {
  static std::string text;
  return text;
}

std::size_t dropped = 0;  // characters before those that are kept

ssize_t keep_lines(void* /*cookie*/, const char* text, std::size_t size) {
  if (lines().size() + size > kKeptText) {
    const std::size_t older = lines().size() / 2;
    lines().erase(0, older);
    dropped += older;
  }
  lines().append(text, size);
  return static_cast<ssize_t>(size);
}

FILE* line_keeper() {
  static FILE* const stream = [] {
    lines().reserve(kKeptText);
    return fopencookie(nullptr, "w", {nullptr, keep_lines, nullptr, nullptr});
  }();
  return stream;
}

FILE* real_stderr = nullptr;

}  // namespace

void report_broken_promise(const char* what) {
  fprintf(real_stderr, "\nfuzz: broken promise: %s\n", what);
  std::abort();
}

void expect_documented(const faults::CallEnding& call) {
  const std::string reason = faults::undocumented(call);
  if (!reason.empty()) report_broken_promise(reason.c_str());
}

// Allocated before memory is measured.
Trial::Trial(std::size_t file_size)
    : memory_limit_(static_cast<std::ptrdiff_t>(kFixedMemory + kMemoryPerByte * file_size)) {
  real_stderr = stderr;
  stderr = line_keeper();
  lines().clear();
  dropped = 0;
  memory_ = faults::MemoryMeter();
  start_ = std::clock();
}

Trial::~Trial() {
  const std::clock_t end = std::clock();
  const bool memory_was_kept = memory_.peak() <= memory_limit_;
  fflush(stderr);
  stderr = real_stderr;
  if (!memory_was_kept) report_broken_promise("more memory than 16 MiB and 8 times the file");
  if (end - start_ > CLOCKS_PER_SEC) report_broken_promise("more than 1 s of processor time");
  if (lines().find("MEMORY LEAK DETECTED") != std::string::npos) report_broken_promise(lines().c_str());
}

std::size_t Trial::length() const {
  fflush(stderr);
  return dropped + lines().size();
}

std::string Trial::since(std::size_t begin) const {
  fflush(stderr);
  return lines().substr(std::max(begin, dropped) - dropped);
}

}  // namespace fuzz
