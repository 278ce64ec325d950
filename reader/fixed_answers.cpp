// Entry points with constant answers: the reader has no node or element ids, structured blocks, ghosts,
// borders, materials or species, rigid bodies, polygons, polyhedra or point queries.
#include "interface/userd_api.h"
#include "reader/globals.h"

using namespace fld;

int USERD_get_block_coords_by_component(int /*part*/, int /*component*/, float* /*coords*/) {
  return 1;
}
int USERD_get_block_iblanking(int /*part*/, int* /*iblanks*/) {
  return 1;
}
int USERD_get_block_ghost_flags(int /*part*/, int* /*flags*/) {
  return 1;
}
int USERD_get_ghosts_in_block_flag(int /*part*/) {
  return 0;
}
int USERD_get_ghosts_in_model_flag() {
  return 0;
}
int USERD_get_node_label_status() {
  return 0;
}
int USERD_get_element_label_status() {
  return 0;
}

// -1: the host computes extents and maximum sizes itself.
int USERD_get_model_extents(float* /*extents*/) {
  return -1;
}
int USERD_get_maxsize_info(int* /*max_nodes*/, int** /*max_elements*/, int** /*max_ijk*/) {
  return -1;
}

int USERD_get_number_of_files_in_dataset() {
  return Num_dataset_files;
}
int USERD_get_dataset_query_file_info(void* /*files*/) {
  return 1;
}

int USERD_get_descrip_lines(int /*which_type*/, int /*variable*/, int /*imag_data*/, char* line1,
                            char* line2) {
  line1[0] = '\0';
  line2[0] = '\0';
  return 1;
}

int USERD_get_border_availability(int /*part*/, int* /*element_counts*/) {
  return -1;
}
int USERD_get_border_elements_by_type(int /*part*/, int /*slot*/, int** /*rows*/, short* /*parent_type*/,
                                      int* /*parent_number*/) {
  return -1;
}

float USERD_get_constant_val(int /*variable*/, int /*imag_data*/) {
  return 0.0F;
}
int USERD_get_var_value_at_specific(int /*variable*/, int /*node_or_element*/, int /*part*/,
                                    int /*element_type*/, int /*step*/, float* /*values*/,
                                    int /*imag_data*/) {
  return 3;
}
int USERD_bkup(FILE* /*archive*/, int /*backup_type*/) {
  return 3;
}

int USERD_get_number_of_material_sets() {
  return Num_material_sets;
}
int USERD_get_matf_set_info(int* /*set_ids*/, char** /*set_names*/) {
  return 1;
}
int USERD_get_number_of_materials(int /*set*/) {
  return 0;
}
int USERD_get_matf_var_info(int /*set*/, int* /*ids*/, char** /*descriptions*/) {
  return 1;
}
int USERD_size_matf_data(int /*set*/, int /*part*/, int /*which_type*/, int /*material_type*/,
                         int* /*count*/) {
  return 1;
}
int USERD_load_matf_data(int /*set*/, int /*part*/, int /*which_type*/, int /*material_type*/, int* /*ids*/,
                         float* /*values*/) {
  return 1;
}

int USERD_get_nsided_conn(int /*part*/, int* /*conn*/) {
  return -1;
}
int USERD_get_nfaced_nodes_per_face(int /*part*/, int* /*counts*/) {
  return -1;
}
int USERD_get_nfaced_conn(int /*part*/, int* /*conn*/) {
  return -1;
}
int USERD_get_uns_failed_params(char* /*variable*/, float* /*threshold1*/, float* /*threshold2*/,
                                int* /*operator1*/, int* /*operator2*/, int* /*logic*/) {
  return -1;
}
