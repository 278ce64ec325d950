// The names of the entry points, without their common prefix: those that a session requires, and those
// that a reader may lack.
#pragma once

#define HOST_REQUIRED_ENTRY_POINTS(X) \
  X(get_name_of_reader)               \
  X(get_reader_version)               \
  X(set_filenames)                    \
  X(get_number_of_timesets)           \
  X(get_num_of_time_steps)            \
  X(get_sol_times)                    \
  X(set_time_set_and_step)            \
  X(get_changing_geometry_status)     \
  X(get_number_of_model_parts)        \
  X(get_gold_part_build_info)         \
  X(get_part_coords)                  \
  X(get_part_elements_by_type)        \
  X(get_number_of_variables)          \
  X(get_gold_variable_info)           \
  X(get_var_by_component)             \
  X(exit_routine)

#define HOST_OPTIONAL_ENTRY_POINTS(X) \
  X(get_reader_release)               \
  X(get_reader_descrip)               \
  X(set_filename_button_labels)       \
  X(set_server_number)                \
  X(get_extra_gui_numbers)            \
  X(get_extra_gui_defaults)           \
  X(set_extra_gui_data)               \
  X(get_extra_data)                   \
  X(get_timeset_description)          \
  X(get_geom_timeset_number)          \
  X(get_part_node_ids)                \
  X(get_part_element_ids_by_type)     \
  X(stop_part_building)               \
  X(get_constant_val)                 \
  X(get_var_value_at_specific)        \
  X(get_descrip_lines)                \
  X(get_metadata)                     \
  X(get_block_coords_by_component)    \
  X(get_block_iblanking)              \
  X(get_block_ghost_flags)            \
  X(get_ghosts_in_block_flag)         \
  X(get_ghosts_in_model_flag)         \
  X(get_node_label_status)            \
  X(get_element_label_status)         \
  X(get_model_extents)                \
  X(get_number_of_files_in_dataset)   \
  X(get_dataset_query_file_info)      \
  X(get_maxsize_info)                 \
  X(get_border_availability)          \
  X(get_border_elements_by_type)      \
  X(bkup)                             \
  X(get_number_of_material_sets)      \
  X(get_matf_set_info)                \
  X(get_number_of_materials)          \
  X(get_matf_var_info)                \
  X(size_matf_data)                   \
  X(load_matf_data)                   \
  X(get_nsided_conn)                  \
  X(get_nfaced_nodes_per_face)        \
  X(get_nfaced_conn)                  \
  X(get_uns_failed_params)
