// The known titles and the layouts of their sections.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace inspect {

class SectionReader;

// Bytes of a title, padded with blanks.
inline constexpr std::size_t kTitleLength = 32;

enum class TitleId : std::uint8_t {
  application,
  application_version,
  release_date,
  grid_type,
  dimension,
  bias,
  date,
  comments,
  cycle,
  unused,
  header_end,
  region_set,
  file_end,
  coordinate_system,
  surfaces,
  surfaces_array,
  volumes,
  volumes_array,
  elements,
  materials,
  nodes,
  motion,
  scalar,
  vector,
};

enum class TitleGroup : std::uint8_t { header_item, header_end, region_set, file_end, section };

struct TitleInfo {
  TitleId id;
  TitleGroup group;
  bool is_prefix;  // anything may follow the text, usually a name
  std::string_view text;
  void (*read)(SectionReader&);  // reads the blocks up to the end rule; null if there are none
};

std::span<const TitleInfo> all_titles();

// The entry of a title, given without the blanks at its end; null for an unknown one. Readers ignore what
// follows a known title and a blank.
const TitleInfo* find_title(std::string_view text);

// The known title that an unknown one may be a misspelling of: it differs in case alone, or in at most one
// character of eight. Null when there is none.
const TitleInfo* similar_title(std::string_view text);

}  // namespace inspect
