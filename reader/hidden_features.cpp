#include "reader/hidden_features.h"

int USERD_get_matsp_info(int /*set*/, int* /*ids*/, char** /*descriptions*/, int* /*counts*/,
                         int* /*numbers*/) {
  return 1;
}
int USERD_rigidbody_existence() {
  return 2;
}
int USERD_rigidbody_values(int /*part*/, float* /*values*/) {
  return 2;
}
int USERD_get_structured_reader_cinching() {
  return 2;
}
int USERD_set_block_range_and_stride(int /*part*/, int /*min_i*/, int /*max_i*/, int /*stride_i*/,
                                     int /*min_j*/, int /*max_j*/, int /*stride_j*/, int /*min_k*/,
                                     int /*max_k*/, int /*stride_k*/) {
  return -1;
}
int USERD_get_number_of_species(int /*set*/) {
  return 0;
}
