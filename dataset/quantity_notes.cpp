#include "dataset/quantity_notes.h"

#include "format/read_checks.h"
#include "format/record.h"
#include "support/errors.h"

namespace fld {

namespace {

// Goes back to `begin` and calls `read`, which may fail. Whether that ends where the stream stands now, and
// where it is put again.
template <class Read>
bool ends_here(FILE* stream, off_t begin, Read read) {
  const off_t end = ftello(stream);
  bool same = false;
  go_to(stream, begin);
  try {
    read();
    same = ftello(stream) == end;
  } catch (const FLDReadException&) {
    clearerr(stream);
  }
  go_to(stream, end);
  return same;
}

}  // namespace

// Whether reading the section's body for its quantity ends where the walk that checks the sections went on.
template <class Read>
void QuantityNotes::check(off_t body, Read read) {
  agree_ = agree_ && !sets_.empty() && ends_here(stream_, body, [&] { read(sets_.back()); });
}

void QuantityNotes::section(long offset, const char* title, off_t body) {
  if (title_starts_with(title, "LS_Scalar:")) {
    check(body, [&](FLDSEEK& set) { FLDV4_Scalar_SEEK(stream_, offset, title, set.m_scalars); });
  } else if (title_starts_with(title, "LS_Vector:")) {
    check(body, [&](FLDSEEK& set) { FLDV4_Vector_SEEK(stream_, offset, title, set.m_vectors, dimension_); });
  } else if (sets_.empty()) {
    agree_ = false;
  }
}

void QuantityNotes::motion(off_t body) {
  check(body, [&](FLDSEEK&) { FLDV4_I_SKIP(stream_); });
}

std::vector<FLDSEEK> QuantityNotes::take(const char* title, int length) {
  if (!agree_ || titlecmp(title, "OverlapEnd", length) != 0) return {};
  return std::move(sets_);
}

}  // namespace fld
