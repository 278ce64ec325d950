// Index entries of quantity sections: offset, name and label of a scalar or vector. The values are skipped
// here and read when the host asks for them.
#pragma once

#include <cstdint>
#include <stdio.h>
#include <vector>

namespace fld {

// One quantity section of a region set.
struct FLDTITLE {
  int64_t m_seek = 0;     // file offset of the section's title record
  char m_name[33] = {};   // title after "LS_Scalar:" or "LS_Vector:", without trailing blanks
  char m_label[39] = {};  // at most 32 characters, without trailing blanks
};
struct FLDTITLE_Scalar : FLDTITLE {};
struct FLDTITLE_Vector : FLDTITLE {};

constexpr int kQuantityPrefixLength = 10;  // of "LS_Scalar:" and "LS_Vector:"
constexpr int kLabelLength = 32;

// Both start after the section's leading integer, append an entry for the section with `title` at `offset`,
// and leave the stream after the end rule. They return whether FLDV4_I_SKIP would have stopped at the same
// offset. It would not if the label's record differs from its rule or an end rule comes early.
bool FLDV4_Scalar_SEEK(FILE* stream, long offset, const char* title, std::vector<FLDTITLE_Scalar>& list);
// `dimension` from the file's header: 3 means that there is a Z component.
bool FLDV4_Vector_SEEK(FILE* stream, long offset, const char* title, std::vector<FLDTITLE_Vector>& list,
                       int dimension);

}  // namespace fld
