// The index entries of quantity sections: where a scalar or vector stands in its file, its name and its
// label. Values are stepped over here and read later, when the host asks for them.
#pragma once

#include <cstdint>
#include <stdio.h>
#include <vector>

namespace fld {

// One quantity section of a region set. Zero-filled when made.
struct FLDTITLE {
  int64_t m_seek = 0;     // file offset of the section's title record
  char m_name[33] = {};   // what follows "LS_Scalar:" or "LS_Vector:", without trailing blanks
  char m_label[39] = {};  // at most 32 characters, without trailing blanks
};
struct FLDTITLE_Scalar : FLDTITLE {};
struct FLDTITLE_Vector : FLDTITLE {};

constexpr int kQuantityPrefixLength = 10;  // of "LS_Scalar:" and "LS_Vector:"
constexpr int kLabelLength = 32;

// Both take a stream behind the section's leading integer, append the entry of the section that began at
// `offset` with `title`, and leave the stream behind its end rule. They return whether FLDV4_I_SKIP would
// have left it there as well: it does unless the label's record is not what its rule says, or an end rule
// stands before the end.
bool FLDV4_Scalar_SEEK(FILE* stream, long offset, const char* title, std::vector<FLDTITLE_Scalar>& list);
// `dimension` as in the file's header: with 3 there is a Z component.
bool FLDV4_Vector_SEEK(FILE* stream, long offset, const char* title, std::vector<FLDTITLE_Vector>& list,
                       int dimension);

}  // namespace fld
