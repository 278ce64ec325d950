#include "format/record.h"

#include <algorithm>
#include <cstring>

#include "format/read_checks.h"
#include "support/byte_order.h"
#include "support/errors.h"

namespace fld {

namespace {

constexpr char kMagic[] = "VTRL-FLD";
constexpr size_t kMagicLength = 8;

void step_over_records(FILE* stream, int count) {
  for (int k = 0; k < count; ++k) {
    step_over(stream, read_marker(stream));
    read_marker(stream);
  }
}

}  // namespace

int read_marker(FILE* stream) {
  int marker = 0;
  read_elements(stream, &marker, 4, 1);
  return marker;
}

void FLD_I_HEAD_IVSN(FILE* stream, char* magic, int& version) {
  // Read without the check for end of file: a file too short for this record is reported as "not an FLD
  // file", not as truncated.
  char record[4 + kMagicLength + 4] = {};
  cnvt_fread(record, 1, sizeof record, stream);
  memcpy(magic, record + 4, kMagicLength);
  version = 0;
  if (feof(stream) != 0 || ferror(stream) != 0) {
    magic[0] = '\0';
    return;
  }
  if (!is_fld_magic(magic)) return;
  read_marker(stream);
  read_elements(stream, &version, 4, 1);
  read_marker(stream);
}

bool is_fld_magic(const char* magic) {
  return memcmp(magic, kMagic, kMagicLength) == 0;
}

int FLDV4_I_TITLE(FILE* stream, char* title) {
  read_marker(stream);
  read_elements(stream, title, 1, kTitleLength);
  title[kTitleLength] = '\0';
  return std::clamp(read_marker(stream), 0, kTitleLength);
}

int titlecmp(const char* title, const char* key, int n) {
  char copy[kTitleLength + 1] = {};
  memcpy(copy, title, static_cast<size_t>(n));
  for (auto i = strlen(key); i < static_cast<size_t>(n) && copy[i] == ' '; ++i) copy[i] = '\0';
  return strcmp(copy, key);
}

bool title_starts_with(const char* title, const char* prefix) {
  return strncmp(title, prefix, strlen(prefix)) == 0;
}

Rule FLDV4_I_RULE(FILE* stream) {
  int fields[3] = {};
  read_marker(stream);
  read_elements(stream, fields, 4, 3);
  read_marker(stream);
  return {fields[0], fields[1], fields[2]};
}

void FLDV4_I_END(FILE* stream) {
  if (!FLDV4_I_RULE(stream).is_end()) throw FLDReadException("ERROR IN FLDV4_I_END");
}

void FLDV4_I_SKIP(FILE* stream) {
  for (Rule rule = FLDV4_I_RULE(stream); !rule.is_end(); rule = FLDV4_I_RULE(stream)) {
    step_over_records(stream, rule.nRecords);
  }
}

bool FLDV4_I_SKIP_SUB(FILE* stream) {
  const Rule rule = FLDV4_I_RULE(stream);
  step_over_records(stream, rule.nRecords);
  return !rule.is_end();
}

}  // namespace fld
