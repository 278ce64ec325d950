#include "testkit/description.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace testkit {

void RegionSet::add(std::vector<Section> several) {
  sections.insert(sections.end(), std::make_move_iterator(several.begin()),
                  std::make_move_iterator(several.end()));
}

Section& RegionSet::section(std::string_view title) {
  const auto found = std::find_if(sections.begin(), sections.end(),
                                  [&](const Section& each) { return each.title.text == title; });
  if (found == sections.end()) throw std::out_of_range("no section " + std::string(title));
  return *found;
}

void RegionSet::remove(std::string_view title) {
  std::erase_if(sections, [&](const Section& each) { return each.title.text == title; });
}

RegionSet& File::add_region_set() {
  RegionSet& set = region_sets.emplace_back();
  set.opener = "OverlapStart_" + std::to_string(region_sets.size());
  return set;
}

}  // namespace testkit
