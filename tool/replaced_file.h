// Text files that are there completely or not at all.
#pragma once

#include <filesystem>
#include <string_view>

namespace tool {

// Writes the text under a name beside `path` and then gives it the name of `path`, so that whoever reads
// `path` finds the old text or the new one. Throws CommandError when the text cannot be written.
void replace_file(const std::filesystem::path& path, std::string_view text);

}  // namespace tool
