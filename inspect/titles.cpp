#include "inspect/titles.h"

#include <algorithm>

#include "inspect/section_layouts.h"

namespace inspect {
namespace {

using enum TitleId;
constexpr TitleGroup kItem = TitleGroup::header_item;
constexpr TitleGroup kSection = TitleGroup::section;

constexpr TitleInfo kTitles[] = {
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
    {motion, kSection, false, "LS_ALE", read_motion},
    {scalar, kSection, true, "LS_Scalar:", read_scalar},
    {vector, kSection, true, "LS_Vector:", read_vector},
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
