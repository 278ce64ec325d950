#include "format/quantity_index.h"

#include <cstring>

#include "format/data_block.h"
#include "format/record.h"
#include "support/byte_order.h"

namespace fld {

namespace {

constexpr int kNameLength = kTitleLength - kQuantityPrefixLength;

void begin_entry(FLDTITLE& entry, long offset, const char* title) {
  entry.m_seek = offset;
  memcpy(entry.m_name, title + kQuantityPrefixLength, strnlen(title + kQuantityPrefixLength, kNameLength));
  cnvt_trimright(entry.m_name, kNameLength);
}

void read_label(FILE* stream, FLDTITLE& entry) {
  FLDV4_I_CHARarray(stream, kLabelLength, entry.m_label);
  cnvt_trimright(entry.m_label, kLabelLength);
}

void step_over_blocks(FILE* stream, int count) {
  for (int block = 0; block < count; ++block) FLDV4_I_SKIP_SUB(stream);
}

}  // namespace

void FLDV4_Scalar_SEEK(FILE* stream, long offset, const char* title, std::vector<FLDTITLE_Scalar>& list) {
  FLDTITLE_Scalar& entry = list.emplace_back();
  begin_entry(entry, offset, title);
  read_label(stream, entry);
  step_over_blocks(stream, 2);  // value count, values
  FLDV4_I_END(stream);
}

void FLDV4_Vector_SEEK(FILE* stream, long offset, const char* title, std::vector<FLDTITLE_Vector>& list,
                       int dimension) {
  FLDTITLE_Vector& entry = list.emplace_back();
  begin_entry(entry, offset, title);
  step_over_blocks(stream, 1);  // leading integer
  read_label(stream, entry);
  step_over_blocks(stream, dimension == 3 ? 4 : 3);  // count per component, components
  FLDV4_I_END(stream);
}

}  // namespace fld
