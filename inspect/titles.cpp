#include "inspect/titles.h"

#include <algorithm>

#include "inspect/section_layouts.h"

namespace inspect {
namespace {

using enum TitleId;
constexpr TitleGroup kItem = TitleGroup::header_item;
constexpr TitleGroup kSection = TitleGroup::section;

constexpr TitleInfo kTitles[] = {
    {application, kItem, "Application", false, read_anything},
    {application_version, kItem, "ApplicationVersion", false, read_application_version},
    {release_date, kItem, "ReleaseDate", false, read_release_date},
    {grid_type, kItem, "GridType", false, read_anything},
    {dimension, kItem, "Dimension", false, read_dimension},
    {bias, kItem, "Bias", false, read_bias},
    {date, kItem, "Date", false, read_anything},
    {comments, kItem, "Comments", false, read_anything},
    {cycle, kItem, "Cycle", false, read_cycle},
    {unused, kItem, "Unused", false, read_unused},
    {header_end, TitleGroup::header_end, "HeaderDataEnd", false, nullptr},
    {region_set, TitleGroup::region_set, "OverlapStart_", true, nullptr},
    {file_end, TitleGroup::file_end, "OverlapEnd", false, nullptr},
    {coordinate_system, kSection, "LS_CoordinateSystem", false, read_coordinate_system},
    {surfaces, kSection, "LS_SurfaceGeometry", false, read_surfaces},
    {surfaces_array, kSection, "LS_SurfaceGeometryArray", false, read_surfaces_array},
    {volumes, kSection, "LS_VolumeGeometry", false, read_volumes},
    {volumes_array, kSection, "LS_VolumeGeometryArray", false, read_volumes_array},
    {elements, kSection, "LS_Elements", false, read_elements},
    {materials, kSection, "LS_MatOfElements", false, read_materials},
    {nodes, kSection, "LS_Nodes", false, read_nodes},
    {motion, kSection, "LS_ALE", false, read_motion},
    {scalar, kSection, "LS_Scalar:", true, read_scalar},
    {vector, kSection, "LS_Vector:", true, read_vector},
};

// In how many places two texts differ, a missing character counting as a blank.
std::size_t difference(std::string_view a, std::string_view b) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < std::max(a.size(), b.size()); ++i) {
    count += (i < a.size() ? a[i] : ' ') != (i < b.size() ? b[i] : ' ') ? 1 : 0;
  }
  return count;
}

}  // namespace

std::span<const TitleInfo> all_titles() {
  return kTitles;
}

const TitleInfo* find_title(std::string_view text) {
  const auto* const found = std::find_if(std::begin(kTitles), std::end(kTitles), [&](const TitleInfo& title) {
    return title.is_prefix ? text.starts_with(title.text) : text == title.text;
  });
  return found == std::end(kTitles) ? nullptr : found;
}

const TitleInfo* near_miss(std::string_view text) {
  const auto* const found = std::find_if(std::begin(kTitles), std::end(kTitles), [&](const TitleInfo& title) {
    return difference(title.is_prefix ? text.substr(0, title.text.size()) : text, title.text) <= 2;
  });
  return found == std::end(kTitles) ? nullptr : found;
}

}  // namespace inspect
