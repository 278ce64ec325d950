#include "format/header.h"

#include "format/data_block.h"
#include "format/read_checks.h"
#include "format/record.h"

namespace fld {

namespace {

void read_int_item(FILE* stream, int* value) {
  *value = read_int(stream, *value);
  FLDV4_I_END(stream);
}

void read_cycle(FILE* stream, int* cycle, double* time) {
  *cycle = read_int(stream, *cycle);
  *time = FLDV4_I_FPREC(stream);
  FLDV4_I_END(stream);
}

// One value of the item "Unused". Its rule record is ignored.
void read_unused_value(FILE* stream, void* value, size_t width) {
  FLDV4_I_RULE(stream);
  read_marker(stream);
  read_elements(stream, value, width, 1);
  read_marker(stream);
}

}  // namespace

int FLDV4_I_HeadB(FILE* stream, int* dimension, int* cycle, double* time, float* unusedFloat,
                  double* unusedDouble, int* bias) {
  for (;;) {
    char title[kTitleLength + 1];
    const int n = FLDV4_I_TITLE(stream, title);
    const auto is = [&](const char* key) { return titlecmp(title, key, n) == 0; };
    if (is("HeaderDataEnd")) return 0;
    if (is("ApplicationVersion") || is("ReleaseDate")) {
      int dropped = 0;
      read_int_item(stream, &dropped);
    } else if (is("Dimension")) {
      read_int_item(stream, dimension);
    } else if (is("Bias")) {
      read_int_item(stream, bias);
    } else if (is("Cycle")) {
      read_cycle(stream, cycle, time);
    } else if (is("Unused")) {
      read_unused_value(stream, unusedFloat, sizeof *unusedFloat);
      read_unused_value(stream, unusedDouble, sizeof *unusedDouble);
      FLDV4_I_END(stream);
    } else {
      // "Application", "GridType", "Date", "Comments" and unknown titles.
      FLDV4_I_SKIP(stream);
    }
  }
}

}  // namespace fld
