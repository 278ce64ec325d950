// Input files for the format readers.
#pragma once

#include <initializer_list>
#include <memory>
#include <new>
#include <stdio.h>
#include <string>
#include <string_view>

#include "testkit/byte_sink.h"
#include "testkit/record_writer.h"
#include "testkit/section.h"

// A temporary file with these bytes. It is a real file because the readers compare counts with the file size.
class Input {
 public:
  explicit Input(std::string_view bytes) : stream_(tmpfile()) {
    if (!stream_ || fwrite(bytes.data(), 1, bytes.size(), stream()) != bytes.size()) throw std::bad_alloc();
    rewind(stream());
  }

  FILE* stream() const { return stream_.get(); }
  long position() const { return ftell(stream()); }
  // The bytes after the read position.
  std::string rest() const {
    std::string bytes;
    for (int c = fgetc(stream()); c != EOF; c = fgetc(stream())) bytes += static_cast<char>(c);
    return bytes;
  }

 private:
  struct Close {
    void operator()(FILE* stream) const { fclose(stream); }
  };
  std::unique_ptr<FILE, Close> stream_;
};

// Bytes after the input, to check that they are not read.
inline constexpr char kNext[] = "NEXT";

// The bytes of records that `write` makes with a RecordWriter.
template <class Write>
std::string written(Write write) {
  testkit::StringSink sink;
  testkit::RecordWriter writer(sink);
  write(writer);
  return sink.take();
}

inline std::string bytes_of(const testkit::Title& title) {
  return written([&](testkit::RecordWriter& writer) { writer.title(title); });
}

inline std::string bytes_of(const testkit::Rule& rule) {
  return written([&](testkit::RecordWriter& writer) { writer.rule(rule); });
}

inline std::string bytes_of(const testkit::Block& block) {
  return written([&](testkit::RecordWriter& writer) { writer.block(block); });
}

// The body of a section: the blocks and the end rule, without the title and the leading integer.
inline std::string body_of(const testkit::Section& section) {
  return written([&](testkit::RecordWriter& writer) {
    for (const testkit::Block& block : section.blocks) writer.block(block);
    if (section.end_rule) writer.rule(*section.end_rule);
  });
}

// Header items, with their titles.
inline std::string bytes_of(std::initializer_list<testkit::Section> items) {
  std::string bytes;
  for (const testkit::Section& item : items) bytes += bytes_of(item.title) + body_of(item);
  return bytes;
}
