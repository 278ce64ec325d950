// Features that the reader lacks. They are exported with C++ linkage, so a host that looks up the plain names
// does not find them and treats the features as absent.
#pragma once

#define USERD_HIDDEN __attribute__((visibility("default")))

USERD_HIDDEN int USERD_get_matsp_info(int set, int* ids, char** descriptions, int* counts, int* numbers);
USERD_HIDDEN int USERD_rigidbody_existence();
USERD_HIDDEN int USERD_rigidbody_values(int part, float* values);
USERD_HIDDEN int USERD_get_structured_reader_cinching();
USERD_HIDDEN int USERD_set_block_range_and_stride(int part, int min_i, int max_i, int stride_i, int min_j,
                                                  int max_j, int stride_j, int min_k, int max_k,
                                                  int stride_k);
USERD_HIDDEN int USERD_get_number_of_species(int set);
