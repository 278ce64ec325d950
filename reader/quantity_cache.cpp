#include "reader/quantity_cache.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "format/data_block.h"
#include "format/input_file.h"
#include "format/record.h"
#include "reader/globals.h"
#include "support/errors.h"

namespace fld {

namespace {

// Whether there is a title that begins with `expected` at `offset`. If so, leaves the stream after it.
bool find_title(FILE* stream, int64_t offset, const std::string& expected) {
  char title[kTitleLength + 1];
  if (fseeko(stream, offset, SEEK_SET) != 0) return false;
  try {
    FLDV4_I_TITLE(stream, title);
  } catch (const FLDReadException&) {
    return false;  // the file is shorter than when it was indexed
  }
  return title_starts_with(title, expected.c_str());
}

void replace_undefined(const FLDFile& file, const VFPA& values, int n) {
  cv_cut_fld(values, n, file.m_unusedFloat, file.m_unusedDouble, static_cast<double>(Ens_Undef_value));
}

void replace_undefined(const FLDFile& file, const Scalar& scalar) {
  replace_undefined(file, scalar.values, scalar.n);
}

void replace_undefined(const FLDFile& file, const Vector& vector) {
  for (const VFPA& component : vector.components) replace_undefined(file, component, vector.n);
}

template <class Quantity>
int cache(const FLDFile& file, const FLDTITLE& title, const char* prefix, smart_ptr<Quantity> (*read)(FILE*),
          smart_ptr<Quantity>& held, std::string& held_name) {
  std::string name = title.m_name;
  // An empty name means that nothing is cached, even if a quantity's own name is empty.
  if (!name.empty() && name == held_name) return 1;
  const InputFile input(file.m_path, Access::bulk);
  if (!input) {
    fprintf(stderr, "error : failed to open fld file : %s.\n", file.m_path.c_str());
    return -1;
  }
  if (!find_title(input.stream(), title.m_seek, prefix + name)) {
    fputs("error : failed to seek fld file.\n", stderr);
    return -1;
  }
  read_int(input.stream());
  smart_ptr<Quantity> quantity = read(input.stream());
  replace_undefined(file, *quantity);
  held = std::move(quantity);
  held_name.swap(name);
  return 1;
}

}  // namespace

int cache_scalar(const FLDFile& file, const FLDTITLE_Scalar& title) {
  return cache(file, title, "LS_Scalar:", FLDV4_Scalar, g_scalar, g_prev_scalar_xxxx);
}

int cache_vector(const FLDFile& file, const FLDTITLE_Vector& title) {
  return cache(file, title, "LS_Vector:", FLDV4_Vector, g_vector, g_prev_vector_xxxx);
}

}  // namespace fld
