#include "dataset/quantity_notes.h"

#include "format/read_checks.h"
#include "format/record.h"
#include "support/errors.h"

namespace fld {

// Whether it could be read and ends at the same offset for both walks.
bool QuantityNotes::read_quantity(long offset, const char* title) {
  FLDSEEK& set = sets_.back();
  try {
    return title_starts_with(title, "LS_Scalar:")
               ? FLDV4_Scalar_SEEK(stream_, offset, title, set.m_scalars.own())
               : FLDV4_Vector_SEEK(stream_, offset, title, set.m_vectors.own(), dimension_);
  } catch (const FLDReadException&) {
    clearerr(stream_);
    return false;
  }
}

bool QuantityNotes::note_if_quantity(long offset, const char* title) {
  if (sets_.empty()) agree_ = false;
  if (!agree_ || !(title_starts_with(title, "LS_Scalar:") || title_starts_with(title, "LS_Vector:")))
    return false;
  const off_t body = ftello(stream_);
  agree_ = read_quantity(offset, title);
  if (!agree_) go_to(stream_, body);
  return agree_;
}

void QuantityNotes::check_motion(off_t body) {
  // One disagreement is enough, and each check may walk the rest of the file.
  if (!agree_) return;
  const off_t end = ftello(stream_);
  go_to(stream_, body);
  try {
    FLDV4_I_SKIP(stream_);
    agree_ = !sets_.empty() && ftello(stream_) == end;
  } catch (const FLDReadException&) {
    clearerr(stream_);
    agree_ = false;
  }
  go_to(stream_, end);
}

std::vector<FLDSEEK> QuantityNotes::take(const char* title, int length) {
  if (!agree_ || titlecmp(title, "OverlapEnd", length) != 0) return {};
  return std::move(sets_);
}

}  // namespace fld
