// Small files, and the findings of a check.
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "inspect/check.h"
#include "testkit/file_writer.h"

namespace inspect_test {

inline constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

// One tetrahedron with a surface, a volume region and material 1, a scalar "p" and a vector "v".
testkit::File small_file();

// Every construct of the format: all element shapes, both forms of the regions, motion with all kinds of
// actions, two region sets, widths of 4 and 8, blocks of no and of several records.
testkit::File rich_file();

// A file's bytes, and the offsets of its parts.
struct Written {
  explicit Written(const testkit::File& file) : bytes(testkit::to_bytes(file, &places)) {}

  // Offsets of the title; of a block's rule record and of its first value.
  std::uint64_t title(const char* text) const { return places.of(text).offset; }
  std::uint64_t rule(const char* text, std::size_t block) const { return places.of(text).blocks[block]; }
  std::uint64_t value(const char* text, std::size_t block) const { return rule(text, block) + 24; }

  testkit::Places places;
  std::string bytes;
};

// The bytes with a 32-bit integer changed.
std::string with_integer(std::string bytes, std::uint64_t offset, std::int32_t value);

// One line per finding: "FLD-106 at 1234: wanted 16, found 20".
using Lines = std::vector<std::string>;
std::string line(int number, std::uint64_t offset, const std::string& wanted, const std::string& found);
Lines lines(const inspect::FileReport& report);

// The findings of a full check of the bytes.
Lines told(const std::string& bytes);
inline Lines told(const testkit::File& file) {
  return told(testkit::to_bytes(file));
}

// In place of a conversion to UTF-8: shows which texts it would be applied to.
inline std::string in_brackets(const std::string& bytes) {
  return "[" + bytes + "]";
}

// Whether a check of the structure, or a full check, finds an error or a warning.
bool finds(const std::string& bytes, bool full);

}  // namespace inspect_test
