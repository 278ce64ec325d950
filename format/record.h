// The record layer: the framing of an FLD file and its three fixed record shapes (identification, title,
// rule).
//
// Every record is a payload between two 4-byte markers that hold its length. Markers are not compared with
// anything; only stepping over a record and the title's length use their value. All readers take a stream
// that stands at the first byte of what they read and leave it at the first byte after it; they throw
// FLDReadException when the file ends or cannot be read.
#pragma once

#include <stdio.h>

namespace fld {

constexpr int kTitleLength = 32;  // characters of a title record

// A rule record: announces a data block and says how it is cut into records.
struct Rule {
  int width = 0;      // bytes of an element
  int perRecord = 0;  // elements of a full record
  int nRecords = 0;   // records that follow

  bool is_end() const { return width == 0 && perRecord == 0 && nRecords == 0; }
};

// One 4-byte marker before or after a payload.
int read_marker(FILE* stream);

// Identification and version records, into the 8 characters of `magic` (not terminated) and `version`. A file
// that is too short for the identification record, or cannot be read there, gives a NUL as the first
// character; without the right magic the version is 0.
void FLD_I_HEAD_IVSN(FILE* stream, char* magic, int& version);

// Whether the 8 characters are those of an FLD file, "VTRL-FLD".
bool is_fld_magic(const char* magic);

// One title record into `title` (at least 33 bytes): 32 characters and NUL. Returns the trailing marker's
// value, brought into 0 to 32: the title's length.
int FLDV4_I_TITLE(FILE* stream, char* title);

// 0 when the first `n` (0 to 32) characters of the title are the key, followed by blanks only up to the next
// other character; else non-zero, as strcmp says.
int titlecmp(const char* title, const char* key, int n);

// Whether the title begins with all characters of `prefix`, as of "OverlapStart_" or "LS_Scalar:".
bool title_starts_with(const char* title, const char* prefix);

// One rule record.
Rule FLDV4_I_RULE(FILE* stream);

// The end rule of a section or header item; any other throws FLDReadException "ERROR IN FLDV4_I_END".
void FLDV4_I_END(FILE* stream);

// Steps over data blocks up to and including the end rule.
void FLDV4_I_SKIP(FILE* stream);

// Steps over exactly one data block. False when its rule is the end rule, at which FLDV4_I_SKIP would have
// ended.
bool FLDV4_I_SKIP_SUB(FILE* stream);

}  // namespace fld
