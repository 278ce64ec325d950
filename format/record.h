// The record layer: the framing of an FLD file and its three fixed record types (identification, title,
// rule).
//
// Every record is a payload between two 4-byte markers that hold its length. Markers are not validated; only
// skipping a record and the length of a title use their value. All readers start at the first byte of what
// they read, leave the stream at the first byte after it, and throw FLDReadException at end of file or on a
// read error.
#pragma once

#include <stdio.h>

namespace fld {

constexpr int kTitleLength = 32;  // characters of a title record

// A rule record: the header of a data block.
struct Rule {
  int width = 0;      // bytes of an element
  int perRecord = 0;  // elements of a full record
  int nRecords = 0;   // records that follow

  bool is_end() const { return width == 0 && perRecord == 0 && nRecords == 0; }
};

// One 4-byte marker before or after a payload.
int read_marker(FILE* stream);

// Reads the identification and version records into `magic` (8 characters, not terminated) and `version`. If
// the identification record cannot be read, magic[0] is NUL. If the magic is wrong, the version is 0.
void FLD_I_HEAD_IVSN(FILE* stream, char* magic, int& version);

// Whether the 8 characters are "VTRL-FLD".
bool is_fld_magic(const char* magic);

// One title record into `title` (at least 33 bytes): 32 characters and NUL. Returns the title's length, which
// is the trailing marker clamped to 0 to 32.
int FLDV4_I_TITLE(FILE* stream, char* title);

// 0 if the title starts with `key` and the next character is a blank or the title ends; otherwise like
// strcmp. `n` (0 to 32) is the title's length.
int titlecmp(const char* title, const char* key, int n);

// Whether the title begins with `prefix`, such as "OverlapStart_" or "LS_Scalar:".
bool title_starts_with(const char* title, const char* prefix);

// One rule record.
Rule FLDV4_I_RULE(FILE* stream);

// The end rule of a section or header item; any other throws FLDReadException "ERROR IN FLDV4_I_END".
void FLDV4_I_END(FILE* stream);

// Skips data blocks up to and including the end rule.
void FLDV4_I_SKIP(FILE* stream);

// Skips exactly one data block. Returns false if its rule is an end rule, at which FLDV4_I_SKIP stops.
bool FLDV4_I_SKIP_SUB(FILE* stream);

}  // namespace fld
