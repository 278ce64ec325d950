// The plug-in and inspect/ read the same files alike (tests/decoders/disagreement.h). The input is a file, or
// the files of a series: each starts with its identification record.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "fuzz/byte_source.h"
#include "fuzz/scratch_directory.h"
#include "fuzz/target.h"
#include "tests/decoders/disagreement.h"
#include "tests/reader/linked_entry_points.h"

namespace {

constexpr std::string_view kIdentification("\0\0\0\x08VTRL-FLD", 12);
constexpr int kMostFiles = 3;

// Writes the files of the input; returns the first one.
std::filesystem::path write_files(const fuzz::ScratchDirectory& scratch, std::string_view input) {
  auto border = input.find(kIdentification, 1);
  if (border == std::string_view::npos) return scratch.write("single.fld", input);
  for (int number = 1; number <= kMostFiles; ++number) {
    const std::string name = "case_" + std::to_string(number) + ".fld";
    std::filesystem::remove(scratch.path() / name);
    if (input.empty()) continue;
    if (number == kMostFiles) border = input.size();
    border = std::min(border, input.size());
    scratch.write(name, input.substr(0, border));
    input.remove_prefix(border);
    border = input.find(kIdentification, 1);
  }
  return scratch.path() / "case_1.fld";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::ScratchDirectory scratch;
  const std::filesystem::path file = write_files(scratch, fuzz::as_text(data, size));
  const std::string found = decoders::disagreement(reader_test::linked_entry_points(), file);
  if (found.empty()) return 0;
  std::fprintf(stderr, "\nfuzz: the decoders disagree: %s\n", found.c_str());
  std::abort();
}
