// The description of a file, from which the file writer produces the bytes. It is valid at first; every part
// can be changed, removed or made wrong.
//
//   File file;
//   RegionSet& set = file.add_region_set();
//   set.add(mesh_sections(one_tetrahedron()));
//   set.add(scalar_section({.name = "p", .label = "Pressure [Pa]", .values = {1.0, 2.0, 3.0, 4.0}}));
//   file.header.set_bias(1);
//   set.section("LS_Elements").blocks[0] = Block::integer(-5);  // a wrong element count
//   write_file(file, path);
//
// Order in the file: identification, version, header items, title "HeaderDataEnd", per region set its opening
// title and its sections, title "OverlapEnd".
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "testkit/header.h"
#include "testkit/mesh.h"
#include "testkit/motion.h"
#include "testkit/quantity.h"
#include "testkit/section.h"

namespace testkit {

struct RegionSet {
  std::optional<Title> opener = "OverlapStart_1";
  std::vector<Section> sections;

  void add(Section section) { sections.push_back(std::move(section)); }
  void add(std::vector<Section> several);
  // The first section with this title. Throws std::out_of_range if there is none.
  Section& section(std::string_view title);
  // Removes every section with this title.
  void remove(std::string_view title);
};

struct File {
  std::string magic = "VTRL-FLD";
  std::optional<std::int32_t> version = 4;
  Header header = Header::usual();
  std::optional<Title> header_end = "HeaderDataEnd";
  std::deque<RegionSet> region_sets;
  std::optional<Title> closer = "OverlapEnd";
  std::string trailing_bytes;  // after everything else

  std::int64_t split = 0;                   // elements per data record of all numeric blocks; 0: not split
  std::optional<std::int32_t> index_shift;  // added to the indices instead of the header's "Bias"

  // Appends a region set, titled "OverlapStart_1", "OverlapStart_2", ... The reference stays valid.
  RegionSet& add_region_set();
};

}  // namespace testkit
