// Writes the description of a file to disk or memory, and returns the offsets of its parts.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "testkit/byte_sink.h"
#include "testkit/description.h"

namespace testkit {

// The position of a titled stretch (item or section); offsets in bytes from the start of the file.
struct Place {
  std::string title{};
  int region_set = -1;                  // -1 in the header and for the last title
  std::uint64_t offset = 0;             // of the title record
  std::vector<std::uint64_t> blocks{};  // of each block's rule record, without the leading integer
  std::uint64_t end = 0;                // first byte after the stretch
};

struct Places {
  std::vector<Place> all;  // in file order
  std::uint64_t size = 0;  // of the file

  // The `occurrence`-th place with this title, from 0. Throws std::out_of_range if there is none.
  const Place& of(std::string_view title, int occurrence = 0) const;
};

// Throws std::system_error.
Places write_file(const File& file, const std::filesystem::path& path);
Places write(const File& file, ByteSink& sink);
std::string to_bytes(const File& file, Places* places = nullptr);

}  // namespace testkit
