// The host's user-defined reader interface, API version 2.04: the entry points, which a host looks up by
// name. The reader defines them; host programs take the function types from here.
//
// A buffer's size is what the host provides; "rows" means an array of pointers to separately allocated
// arrays. Part, variable, time set and array positions count from 1 unless a comment says otherwise; steps,
// components and rows count from 0.
#pragma once

#include <stdio.h>

#define USERD_API extern "C" __attribute__((visibility("default")))

// Identity and options.
USERD_API int USERD_get_name_of_reader(char* name /* 20 */, int* two_fields);
USERD_API int USERD_get_reader_release(char* release /* 20 */);
USERD_API int USERD_get_reader_version(char* version /* 20 */);
USERD_API int USERD_get_reader_descrip(char* description /* 255 */);
USERD_API char* USERD_set_filename_button_labels(char* label1 /* 80 */, char* label2 /* 80 */);
USERD_API void USERD_set_server_number(int server, int total);
USERD_API int USERD_get_extra_gui_numbers(int* num_toggles, int* num_pulldowns, int* num_fields);
USERD_API int USERD_get_extra_gui_defaults(char** toggle_titles, int* toggle_defaults, char** pulldown_titles,
                                           int* pulldown_counts, int* pulldown_defaults,
                                           char*** pulldown_items, char** field_titles, char** field_texts);
USERD_API void USERD_set_extra_gui_data(int* toggles, int* pulldowns, char** field_texts);
USERD_API int USERD_get_extra_data(int* request, int* a2, int* count, int* a4, void* a5, float* values);

// Opening and time.
USERD_API int USERD_set_filenames(char* filename1, char* filename2, char* directory, int swap_bytes);
USERD_API int USERD_get_number_of_timesets(void);
USERD_API int USERD_get_timeset_description(int set, char* text /* 80 */);
USERD_API int USERD_get_geom_timeset_number(void);
USERD_API int USERD_get_num_of_time_steps(int set);
USERD_API int USERD_get_sol_times(int set, float* times /* one per step, from entry 0 */);
USERD_API void USERD_set_time_set_and_step(int set, int step);
USERD_API int USERD_get_changing_geometry_status(void);

// Parts.
USERD_API int USERD_get_number_of_model_parts(void);
USERD_API int USERD_get_gold_part_build_info(int* ids, int* types, char** descriptions /* rows of 80 */,
                                             int* node_counts, int** element_counts /* rows of 34 */,
                                             int** ijk_dimensions, int** iblanking_options);
USERD_API int USERD_get_part_coords(int part, float** coords /* 3 rows of nodes + 1, from entry 1 */);
USERD_API int USERD_get_part_node_ids(int part, int* ids);
USERD_API int USERD_get_part_elements_by_type(int part, int slot, int** rows /* one row per element */);
USERD_API int USERD_get_part_element_ids_by_type(int part, int slot, int* ids);
USERD_API void USERD_stop_part_building(void);

// Variables.
USERD_API int USERD_get_number_of_variables(void);
USERD_API int USERD_get_gold_variable_info(char** descriptions /* rows of 80 */,
                                           char** filenames /* rows of 80 */, int* types, int* classify,
                                           int* complex, char** ifilenames /* rows of 80 */, float* freq,
                                           int* contran, int* timeset);
USERD_API int USERD_get_var_by_component(int variable, int part, int var_type, int which_type, int imag_data,
                                         int component, float* values /* count + 1, from entry 1 */);
USERD_API float USERD_get_constant_val(int variable, int imag_data);
USERD_API int USERD_get_var_value_at_specific(int variable, int node_or_element, int part, int element_type,
                                              int step, float* values /* 3 */, int imag_data);
USERD_API int USERD_get_descrip_lines(int which_type, int variable, int imag_data, char* line1 /* 80 */,
                                      char* line2 /* 80 */);

// Metadata and end.
USERD_API int USERD_get_metadata(int* size, char* buffer);
USERD_API void USERD_exit_routine(void);

// Features that a reader may lack.
USERD_API int USERD_get_block_coords_by_component(int part, int component, float* coords);
USERD_API int USERD_get_block_iblanking(int part, int* iblanks);
USERD_API int USERD_get_block_ghost_flags(int part, int* flags);
USERD_API int USERD_get_ghosts_in_block_flag(int part);
USERD_API int USERD_get_ghosts_in_model_flag(void);
USERD_API int USERD_get_node_label_status(void);
USERD_API int USERD_get_element_label_status(void);
USERD_API int USERD_get_model_extents(float* extents /* 6 */);
USERD_API int USERD_get_number_of_files_in_dataset(void);
USERD_API int USERD_get_dataset_query_file_info(void* files);
USERD_API int USERD_get_maxsize_info(int* max_nodes, int** max_elements, int** max_ijk);
USERD_API int USERD_get_border_availability(int part, int* element_counts /* 34 */);
USERD_API int USERD_get_border_elements_by_type(int part, int slot, int** rows, short* parent_type,
                                                int* parent_number);
USERD_API int USERD_bkup(FILE* archive, int backup_type);
USERD_API int USERD_get_number_of_material_sets(void);
USERD_API int USERD_get_matf_set_info(int* set_ids, char** set_names);
USERD_API int USERD_get_number_of_materials(int set);
USERD_API int USERD_get_matf_var_info(int set, int* ids, char** descriptions);
USERD_API int USERD_size_matf_data(int set, int part, int which_type, int material_type, int* count);
USERD_API int USERD_load_matf_data(int set, int part, int which_type, int material_type, int* ids,
                                   float* values);
USERD_API int USERD_get_nsided_conn(int part, int* conn);
USERD_API int USERD_get_nfaced_nodes_per_face(int part, int* counts);
USERD_API int USERD_get_nfaced_conn(int part, int* conn);
USERD_API int USERD_get_uns_failed_params(char* variable, float* threshold1, float* threshold2,
                                          int* operator1, int* operator2, int* logic);
