#include "format/quantity_index.h"

#include <cstring>
#include <string>

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

// Returns whether skipping the label would have ended at the same offset.
bool read_label(FILE* stream, FLDTITLE& entry) {
  bool is_plain = false;
  const std::string label = read_text(stream, kLabelLength, &is_plain);
  label.copy(entry.m_label, label.size());
  cnvt_trimright(entry.m_label, kLabelLength);
  return is_plain;
}

// Returns false if one of the rules is an end rule, at which FLDV4_I_SKIP stops.
bool step_over_blocks(FILE* stream, int count) {
  bool are_blocks = true;
  for (int block = 0; block < count; ++block) are_blocks = FLDV4_I_SKIP_SUB(stream) && are_blocks;
  return are_blocks;
}

}  // namespace

bool FLDV4_Scalar_SEEK(FILE* stream, long offset, const char* title, std::vector<FLDTITLE_Scalar>& list) {
  FLDTITLE_Scalar& entry = list.emplace_back();
  begin_entry(entry, offset, title);
  const bool is_plain = read_label(stream, entry);
  const bool are_blocks = step_over_blocks(stream, 2);  // value count, values
  FLDV4_I_END(stream);
  return is_plain && are_blocks;
}

bool FLDV4_Vector_SEEK(FILE* stream, long offset, const char* title, std::vector<FLDTITLE_Vector>& list,
                       int dimension) {
  FLDTITLE_Vector& entry = list.emplace_back();
  begin_entry(entry, offset, title);
  const bool is_block = step_over_blocks(stream, 1);  // leading integer
  const bool is_plain = read_label(stream, entry);
  const bool are_blocks =
      step_over_blocks(stream, dimension == 3 ? 4 : 3);  // count per component, components
  FLDV4_I_END(stream);
  return is_block && is_plain && are_blocks;
}

}  // namespace fld
