#include "inspect/titles.h"

#include <algorithm>
#include <array>

#include "inspect/section_layouts.h"
#include "inspect/text_check.h"

namespace inspect {
namespace {

constexpr TitleGroup kItem = TitleGroup::header_item;
constexpr TitleGroup kSection = TitleGroup::section;

constexpr auto kTitles = [] {
  using enum TitleId;
  return std::to_array<TitleInfo>({
      {application, kItem, false, "Application", read_anything},
      {application_version, kItem, false, "ApplicationVersion", read_application_version},
      {release_date, kItem, false, "ReleaseDate", read_release_date},
      {grid_type, kItem, false, "GridType", read_anything},
      {dimension, kItem, false, "Dimension", read_dimension},
      {bias, kItem, false, "Bias", read_bias},
      {date, kItem, false, "Date", read_anything},
      {comments, kItem, false, "Comments", read_anything},
      {cycle, kItem, false, "Cycle", read_cycle},
      {unused, kItem, false, "Unused", read_unused},
      {header_end, TitleGroup::header_end, false, "HeaderDataEnd", nullptr},
      {region_set, TitleGroup::region_set, true, "OverlapStart_", nullptr},
      {file_end, TitleGroup::file_end, false, "OverlapEnd", nullptr},
      {coordinate_system, kSection, false, "LS_CoordinateSystem", read_coordinate_system},
      {surfaces, kSection, false, "LS_SurfaceGeometry", read_surfaces},
      {surfaces_array, kSection, false, "LS_SurfaceGeometryArray", read_surfaces_array},
      {volumes, kSection, false, "LS_VolumeGeometry", read_volumes},
      {volumes_array, kSection, false, "LS_VolumeGeometryArray", read_volumes_array},
      {elements, kSection, false, "LS_Elements", read_elements},
      {materials, kSection, false, "LS_MatOfElements", read_materials},
      {nodes, kSection, false, "LS_Nodes", read_nodes},
      {motion, kSection, true, "LS_ALE", read_motion},
      {scalar, kSection, true, "LS_Scalar:", read_scalar},
      {vector, kSection, true, "LS_Vector:", read_vector},
  });
}();

// The number of positions at which two texts differ, upper and lower case being the same. A missing character
// counts as a blank.
std::size_t difference(std::string_view a, std::string_view b) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < std::max(a.size(), b.size()); ++i) {
    count += folded(i < a.size() ? a[i] : ' ') != folded(i < b.size() ? b[i] : ' ') ? 1 : 0;
  }
  return count;
}

// How many characters may be wrong in a title of this length; in a short one any other letter makes another
// word.
std::size_t tolerance(std::size_t length) {
  return std::min<std::size_t>(length / 8, 2);
}

}  // namespace

std::span<const TitleInfo> all_titles() {
  return kTitles;
}

const TitleInfo* find_title(std::string_view text) {
  const auto* const found = std::find_if(kTitles.begin(), kTitles.end(), [&](const TitleInfo& title) {
    if (!text.starts_with(title.text)) return false;
    return title.is_prefix || text.size() == title.text.size() || text[title.text.size()] == ' ';
  });
  return found == kTitles.end() ? nullptr : found;
}

const TitleInfo* similar_title(std::string_view text) {
  const auto* const found = std::find_if(kTitles.begin(), kTitles.end(), [&](const TitleInfo& title) {
    const std::string_view compared = title.is_prefix ? text.substr(0, title.text.size()) : text;
    return difference(compared, title.text) <= tolerance(title.text.size());
  });
  return found == kTitles.end() ? nullptr : found;
}

}  // namespace inspect
