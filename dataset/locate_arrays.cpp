// FLDFile::locateGeometry and locateValues: the locations of a file's arrays.
#include <string>

#include "dataset/fld_file.h"
#include "dataset/region_set_reader.h"
#include "format/data_block.h"
#include "format/read_checks.h"
#include "format/record.h"
#include "support/errors.h"

namespace fld {

namespace {

template <class Layout>
Layout locate_quantity(const std::string& path, const FLDTITLE& title, const char* prefix) {
  const InputFile file(path, Access::walk);
  if (!file) throw FLDReadException("THE FILE CANNOT BE OPENED.");
  go_to(file.stream(), title.m_seek);
  char found[kTitleLength + 1];
  FLDV4_I_TITLE(file.stream(), found);
  if (!title_starts_with(found, (std::string(prefix) + title.m_name).c_str())) {
    throw FLDReadException("THE QUANTITY IS NOT AT ITS INDEXED OFFSET.");
  }
  read_int(file.stream());
  Layout layout;
  locate(file.stream(), layout);
  return layout;
}

}  // namespace

RegionSetLayout FLDFile::locateGeometry(int region) const {
  if (region < 0 || static_cast<size_t>(region) >= m_overlap.size()) {
    throw FLDReadException("THE FILE HAS NO SUCH REGION SET.");
  }
  const InputFile file(m_path, Access::walk);
  if (!file) throw FLDReadException("THE FILE CANNOT BE OPENED.");
  if (go_to_region_set(file, static_cast<size_t>(region)) != 0) {
    throw FLDReadException("THE HEADER OF THE FILE HAS CHANGED.");
  }
  RegionSetLayout layout;
  locate_region_set(file.stream(), layout);
  return layout;
}

ScalarLayout FLDFile::locateValues(const FLDTITLE_Scalar& title) const {
  return locate_quantity<ScalarLayout>(m_path, title, "LS_Scalar:");
}

VectorLayout FLDFile::locateValues(const FLDTITLE_Vector& title) const {
  return locate_quantity<VectorLayout>(m_path, title, "LS_Vector:");
}

}  // namespace fld
