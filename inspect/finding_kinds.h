// All kinds of findings with their stable numbers, by hundreds: 1 records and the file as a whole, 2 titles
// and their order, 3 blocks, 4 header values, 5 the mesh, 6 names and texts, 7 quantities, 8 motion, 9 the
// files of a series. A number is never reused.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace inspect {

enum class Severity { error, warning, note };

enum class Kind : std::uint16_t {
  not_fld = 101,
  other_version = 102,
  file_ends = 103,
  record_beyond_end = 104,
  leading_marker = 105,
  trailing_marker = 106,
  record_length = 107,
  framing_lost = 108,
  bytes_after_end = 109,

  title_not_text = 201,
  title_misspelt = 202,
  title_unknown = 203,
  title_misplaced = 204,
  no_header_end = 205,
  section_outside = 206,
  no_region_set = 207,
  section_twice = 208,
  item_twice = 209,
  no_file_end = 210,
  empty_region_set = 211,
  no_nodes = 212,
  no_elements = 213,
  no_materials = 214,
  no_header_item = 215,
  too_many_region_sets = 216,
  no_elements_in_largest = 217,

  rule_fields = 301,
  block_width = 302,
  block_count = 303,
  rule_exceeds_block = 304,
  section_ends_early = 305,
  section_goes_on = 306,
  no_end_rule = 307,
  negative_count = 308,
  item_count = 309,
  unknown_action = 310,

  dimension_two = 401,
  dimension_odd = 402,
  bias_odd = 403,
  cycle_negative = 404,
  time_not_finite = 405,

  element_type = 501,
  connectivity_length = 502,
  element_node = 503,
  face_type = 504,
  face_list_length = 505,
  face_node = 506,
  face_link = 507,
  volume_element = 508,
  material_count = 509,
  material_number = 510,
  coordinate_not_finite = 511,
  coordinate_system = 512,
  flat_element = 513,
  no_content = 514,
  too_many_regions = 515,

  name_empty = 601,
  name_twice = 602,
  name_not_text = 603,
  label_not_text = 604,
  too_many_names = 605,

  value_count = 701,
  not_a_number = 702,
  infinite = 703,
  undefined_share = 704,

  moves_nothing = 801,
  base_cycle_missing = 802,
  base_without_nodes = 803,
  motion_not_finite = 804,
  axis_without_length = 805,

  cycle_differs = 901,
  region_sets_differ = 902,
  time_goes_back = 903,
  cycle_twice = 904,
};

struct KindInfo {
  Kind kind;
  Severity severity;
  std::string_view text;     // the finding in a few words
  std::string_view meaning;  // cause and consequence in a sentence or two
};

// All kinds in the order of their numbers.
std::span<const KindInfo> all_kinds();

const KindInfo& info(Kind kind);

// "FLD-106"
std::string number_text(Kind kind);

// "error", "warning", "note"
std::string_view name(Severity severity);

}  // namespace inspect
