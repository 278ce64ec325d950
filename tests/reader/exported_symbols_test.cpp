// The symbols that the plug-in exports and imports.
#include "gtest/gtest.h"
#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

// The output of a command, as lines of words.
std::vector<std::vector<std::string>> output_of(const std::string& command) {
  struct Close {
    void operator()(FILE* pipe) const { EXPECT_EQ(0, pclose(pipe)); }
  };
  const std::unique_ptr<FILE, Close> pipe(popen(command.c_str(), "r"));
  std::vector<std::vector<std::string>> lines;
  if (pipe == nullptr) return lines;
  std::array<char, 1024> line;
  while (fgets(line.data(), line.size(), pipe.get()) != nullptr) {
    std::istringstream text(line.data());
    lines.emplace_back();
    for (std::string word; text >> word;) lines.back().push_back(word);
  }
  return lines;
}

// The exported names, sorted.
std::vector<std::string> shown_names() {
  std::vector<std::string> names;
  for (const auto& words : output_of(FLD_NM " -D --defined-only '" FLD_PLUGIN_FILE "'")) {
    if (words.size() == 3) names.push_back(words[2]);
  }
  std::sort(names.begin(), names.end());
  return names;
}

// All are functions; in the order of the C locale.
TEST(ExportedSymbols, EntryPointsAndSixDecoratedNamesAndNothingElse) {
  const std::vector<std::string> expected = {
      "USERD_bkup",
      "USERD_exit_routine",
      "USERD_get_block_coords_by_component",
      "USERD_get_block_ghost_flags",
      "USERD_get_block_iblanking",
      "USERD_get_border_availability",
      "USERD_get_border_elements_by_type",
      "USERD_get_changing_geometry_status",
      "USERD_get_constant_val",
      "USERD_get_dataset_query_file_info",
      "USERD_get_descrip_lines",
      "USERD_get_element_label_status",
      "USERD_get_extra_data",
      "USERD_get_extra_gui_defaults",
      "USERD_get_extra_gui_numbers",
      "USERD_get_geom_timeset_number",
      "USERD_get_ghosts_in_block_flag",
      "USERD_get_ghosts_in_model_flag",
      "USERD_get_gold_part_build_info",
      "USERD_get_gold_variable_info",
      "USERD_get_matf_set_info",
      "USERD_get_matf_var_info",
      "USERD_get_maxsize_info",
      "USERD_get_metadata",
      "USERD_get_model_extents",
      "USERD_get_name_of_reader",
      "USERD_get_nfaced_conn",
      "USERD_get_nfaced_nodes_per_face",
      "USERD_get_node_label_status",
      "USERD_get_nsided_conn",
      "USERD_get_num_of_time_steps",
      "USERD_get_number_of_files_in_dataset",
      "USERD_get_number_of_material_sets",
      "USERD_get_number_of_materials",
      "USERD_get_number_of_model_parts",
      "USERD_get_number_of_timesets",
      "USERD_get_number_of_variables",
      "USERD_get_part_coords",
      "USERD_get_part_element_ids_by_type",
      "USERD_get_part_elements_by_type",
      "USERD_get_part_node_ids",
      "USERD_get_reader_descrip",
      "USERD_get_reader_release",
      "USERD_get_reader_version",
      "USERD_get_sol_times",
      "USERD_get_timeset_description",
      "USERD_get_uns_failed_params",
      "USERD_get_var_by_component",
      "USERD_get_var_value_at_specific",
      "USERD_load_matf_data",
      "USERD_set_extra_gui_data",
      "USERD_set_filename_button_labels",
      "USERD_set_filenames",
      "USERD_set_server_number",
      "USERD_set_time_set_and_step",
      "USERD_size_matf_data",
      "USERD_stop_part_building",
      "_Z20USERD_get_matsp_infoiPiPPcS_S_",
      "_Z22USERD_rigidbody_valuesiPf",
      "_Z25USERD_rigidbody_existencev",
      "_Z27USERD_get_number_of_speciesi",
      "_Z32USERD_set_block_range_and_strideiiiiiiiiii",
      "_Z36USERD_get_structured_reader_cinchingv",
  };
  EXPECT_EQ(expected, shown_names());
}

#ifndef FLD_SANITIZED
TEST(ExportedSymbols, NothingButTheStandardLibrariesIsNeeded) {
  const std::vector<std::string> allowed = {"[libstdc++.so.6]", "[libm.so.6]", "[libgcc_s.so.1]",
                                            "[libc.so.6]", "[ld-linux-x86-64.so.2]"};
  int needed = 0;
  for (const auto& words : output_of(FLD_READELF " -d --wide '" FLD_PLUGIN_FILE "'")) {
    if (std::find(words.begin(), words.end(), "(NEEDED)") == words.end()) continue;
    ++needed;
    EXPECT_NE(allowed.end(), std::find(allowed.begin(), allowed.end(), words.back())) << words.back();
  }
  EXPECT_LE(2, needed) << "the C++ and the C library at least";
}
#endif

}  // namespace
