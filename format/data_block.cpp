#include "format/data_block.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "format/large_read.h"
#include "format/read_checks.h"
#include "format/record.h"
#include "support/byte_order.h"
#include "support/errors.h"
#include "support/worker_threads.h"

namespace fld {

namespace {

constexpr int64_t kMarker = 4;  // bytes

// The rule of a block of `n` elements. An end rule means that the section has fewer blocks than its layout.
Rule read_block_rule(FILE* stream, long n) {
  const Rule rule = FLDV4_I_RULE(stream);
  if (n > 0 && rule.is_end()) throw FLDReadException("ERROR IN FLDV4_I_END");
  return rule;
}

// Number of elements in record `k` of an array of `n` >= 0 elements. The record after the last element may
// be empty.
long elements_of_record(const Rule& rule, long k, long n) {
  const long remaining = n - k * rule.perRecord;
  if (rule.perRecord < 0) throw FLDReadException("NEGATIVE RECORD SIZE IN A RULE RECORD.");
  if (remaining < 0) throw FLDReadException("TOO MANY DATA RECORDS IN A DATA BLOCK.");
  return std::min<long>(rule.perRecord, remaining);
}

// Reads the elements of a large array, and the markers around them, if the records hold exactly `n` elements.
bool read_large_array(FILE* stream, const Rule& rule, long n, size_t width, void* out) {
  const int threads = threads_for(n * static_cast<long>(width));
  if (threads == 1 || rule.perRecord <= 0) return false;
  if ((n - 1) / rule.perRecord + 1 != rule.nRecords) return false;
  const ArrayLayout array = {ftello(stream) + kMarker, static_cast<int32_t>(width), rule.perRecord, 0, n};
  if (!read_by_threads(stream, array, threads, out)) return false;
  read_marker(stream);
  return true;
}

void read_records(FILE* stream, const Rule& rule, long n, size_t width, void* out) {
  if (read_large_array(stream, rule, n, width, out)) return;
  auto* bytes = static_cast<char*>(out);
  for (long k = 0; k < rule.nRecords; ++k) {
    const auto count = static_cast<size_t>(elements_of_record(rule, k, n));
    read_marker(stream);
    read_elements(stream, bytes, width, count);
    read_marker(stream);
    bytes += count * width;
  }
}

// Call before allocating an array: the rule must announce at least `n` elements, and the rest of the file
// must be able to hold them.
void check_array(FILE* stream, const Rule& rule, long n, size_t width) {
  check_count(stream, n, width);
  if (std::max(rule.nRecords, 0) * std::max<long>(rule.perRecord, 0) < n) {
    throw FLDReadException("TOO FEW DATA RECORDS IN A DATA BLOCK.");
  }
}

// The location of an array's `n` elements after its rule. Skips the records.
ArrayLayout locate(FILE* stream, const Rule& rule, long n, size_t width) {
  check_array(stream, rule, n, width);
  // If there are too many records, the last one is.
  const long records = std::max(rule.nRecords, 0);
  if (records > 0) elements_of_record(rule, records - 1, n);
  const int64_t begin = ftello(stream);
  const int64_t length = records * 2 * kMarker + (records > 0 ? n * static_cast<int64_t>(width) : 0);
  if (length <= std::numeric_limits<int>::max()) {
    step_over(stream, static_cast<int>(length));
  } else {
    go_to(stream, begin + length);
  }
  return {begin + kMarker, static_cast<int32_t>(width), rule.perRecord, 0, n};
}

void check_float_width(const Rule& rule) {
  if (rule.width != 4 && rule.width != 8) throw FLDReadException("THIS FLD FILE HAS AN INVALID DATA TYPE.");
}

}  // namespace

void FLDV4_I_INTarray(FILE* stream, long n, int* out) {
  const Rule rule = read_block_rule(stream, n);
  read_records(stream, rule, n, sizeof(int), out);
}

void FLDV4_I_INT64array(FILE* stream, long n, long* out) {
  const Rule rule = read_block_rule(stream, n);
  if (rule.width != 4) {
    read_records(stream, rule, n, sizeof(long), out);
    return;
  }
  check_count(stream, n, sizeof(int));
  const auto narrow = make_tracked_array<int>(static_cast<size_t>(n), 1100102);
  read_records(stream, rule, n, sizeof(int), narrow.get());
  std::copy_n(narrow.get(), n, out);
}

double FLDV4_I_FPREC(FILE* stream) {
  const Rule rule = read_block_rule(stream, 1);
  check_float_width(rule);
  double cell = 0.0;
  read_marker(stream);
  read_elements(stream, &cell, static_cast<size_t>(rule.width), 1);
  read_marker(stream);
  return vfpa2double({rule.width, &cell}, 0);
}

void FLDV4_I_FPRECaloc_array(FILE* stream, int n, VFPA* out) {
  const Rule rule = read_block_rule(stream, n);
  check_float_width(rule);
  const auto width = static_cast<size_t>(rule.width);
  check_array(stream, rule, n, width);
  *out = {rule.width, cv_caloc(static_cast<size_t>(n), width, 1100142)};
  read_records(stream, rule, n, width, out->data);
}

std::string read_text(FILE* stream, int n, bool* is_plain) {
  const Rule rule = read_block_rule(stream, n);
  check_count(stream, rule.perRecord, 1);
  std::string text(static_cast<size_t>(std::min(rule.perRecord, n)), '\0');
  const int length = read_marker(stream);
  if (is_plain != nullptr) *is_plain = rule.nRecords == 1 && length == rule.perRecord;
  read_elements(stream, text.data(), 1, text.size());
  step_over(stream, rule.perRecord - static_cast<int>(text.size()));
  read_marker(stream);
  return text;
}

std::string read_field(FILE* stream, int n) {
  std::string text = read_text(stream, n);
  // A block shorter than its field is padded with NULs; blanks before them are not trimmed.
  if (n > 0 && text.size() == static_cast<size_t>(n)) cnvt_trimright(text.data(), n);
  text.resize(strlen(text.c_str()));
  return text;
}

void FLDV4_I_CHARarray(FILE* stream, int n, char* out) {
  const std::string text = read_text(stream, n);
  memset(out, 0, static_cast<size_t>(n) + 1);
  text.copy(out, text.size());
}

void FLDV4_I_CHARarray80(FILE* stream, int n, char* out) {
  constexpr int kColumns = 80;
  const int kept = std::min(n, kColumns);
  FLDV4_I_CHARarray(stream, kept, out);
  memset(out + kept, 0, static_cast<size_t>(kColumns - kept) + 1);
}

int read_int(FILE* stream, int missing) {
  int value = missing;
  FLDV4_I_INTarray(stream, 1, &value);
  return value;
}

TrackedArray<int> read_int_array(FILE* stream, long n, int tag) {
  const Rule rule = read_block_rule(stream, n);
  check_array(stream, rule, n, sizeof(int));
  auto values = make_tracked_array<int>(static_cast<size_t>(n), tag);
  read_records(stream, rule, n, sizeof(int), values.get());
  return values;
}

void take_ints(FILE* stream, long n, int tag, int*& values) {
  values = read_int_array(stream, n, tag).release();
}

void take_ints(FILE* stream, long n, int /*tag*/, ArrayLayout& place) {
  const Rule rule = read_block_rule(stream, n);
  place = locate(stream, rule, n, sizeof(int));
}

void take_floats(FILE* stream, int n, VFPA& values) {
  FLDV4_I_FPRECaloc_array(stream, n, &values);
}

void take_floats(FILE* stream, int n, ArrayLayout& place) {
  const Rule rule = read_block_rule(stream, n);
  check_float_width(rule);
  place = locate(stream, rule, n, static_cast<size_t>(rule.width));
}

}  // namespace fld
