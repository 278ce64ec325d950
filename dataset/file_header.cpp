#include "dataset/file_header.h"

#include <cstdio>

#include "format/header.h"
#include "format/record.h"

namespace fld {

int read_file_header(const InputFile& file, const std::string& path, FLDHeader& header) {
  if (!file) {
    fprintf(stderr, "FAILED TO OPEN %s\n", path.c_str());
    return -1;
  }
  FLD_I_HEAD_IVSN(file.stream(), header.m_magic, header.m_version);
  header.m_magic[8] = '\0';
  if (!is_fld_magic(header.m_magic)) {
    fputs("This is not FLD file.\n", stderr);
    return -2;
  }
  FLDV4_I_HeadB(file.stream(), &header.m_dimension, &header.m_cycle, &header.m_time, &header.m_unusedFloat,
                &header.m_unusedDouble, &header.m_bias);
  if (header.m_version != 4) {
    fputs("FLD FILE VERSION HAS TO BE 4.\n", stderr);
    return -3;
  }
  if (header.m_dimension == 2) {
    fputs("L2D3D MUST BE 3 IN FLD\n", stderr);
    return -3;
  }
  return 0;
}

void trace_reading(const std::string& path) {
  fprintf(stderr, "IN (%4s): %s\n", "FLD", path.c_str());
}

}  // namespace fld
