#include "dataset/fld_file.h"

#include <algorithm>
#include <cstring>

#include "dataset/quantity_notes.h"
#include "format/data_block.h"
#include "format/record.h"
#include "support/assertion.h"

namespace fld {

namespace {

// The entry of `list` with this name, or null.
template <class Title>
const Title* find_title(const SharedList<Title>& list, const char* name) {
  const auto found = std::find_if(list.begin(), list.end(),
                                  [name](const Title& title) { return strcmp(title.m_name, name) == 0; });
  return found == list.end() ? nullptr : found;
}

bool any_of(const std::vector<FLDSEEKOverlap>& overlaps, bool FLDSEEKOverlap::*flag) {
  return std::any_of(overlaps.begin(), overlaps.end(), [flag](const auto& overlap) { return overlap.*flag; });
}

}  // namespace

int FLDFile::checkSections() {
  const InputFile file(m_path, Access::walk);
  const int status = read_file_header(file, m_path, *this);
  if (status != 0) return status;
  FILE* stream = file.stream();
  header_end_ = ftello(stream);
  FLDSEEKOverlap outside;  // receives sections before the first region set, which are ignored
  FLDSEEKOverlap* overlap = &outside;
  QuantityNotes notes(stream, m_dimension);
  for (;;) {
    const off_t offset = ftello(stream);
    char title[kTitleLength + 1];
    const int n = FLDV4_I_TITLE(stream, title);
    if (title_starts_with(title, "OverlapStart_")) {
      overlap = &m_overlap.emplace_back();
      overlap->m_begin = offset;
      notes.begin_region_set();
      continue;
    }
    if (title_starts_with(title, "OverlapEnd")) {
      noted_ = notes.take(title, n);
      checked_ = file.stamp();
      return 0;
    }
    read_int(stream);
    if (title_starts_with(title, "LS_ALE")) {
      const off_t body = ftello(stream);
      FLDV4_ALE(stream, overlap->m_ale);
      overlap->m_hasALE = true;
      notes.check_motion(body);
      continue;
    }
    if (title_starts_with(title, "LS_Nodes")) overlap->m_hasGeometry = true;
    if (title_starts_with(title, "LS_Scalar:@BNODE")) overlap->m_hasOverset = true;
    if (!notes.note_if_quantity(offset, title)) FLDV4_I_SKIP(stream);
  }
}

int FLDFile::seekFLD() {
  trace_reading(m_path);
  if (!noted_.empty() && noted_.size() == m_overlap.size() && checked_ == stamp_of(m_path)) {
    take_noted_sections();
    return 0;
  }
  const InputFile file(m_path, Access::walk);
  const int status = read_file_header(file, m_path, *this);
  if (status != 0) return status;
  FLD_ASSERT(!m_overlap.empty(), "fld", "int FLDFile::seekFLD()");
  FILE* stream = file.stream();
  auto overlap = m_overlap.end();
  for (;;) {
    const long offset = ftello(stream);
    char title[kTitleLength + 1];
    const int n = FLDV4_I_TITLE(stream, title);
    if (title_starts_with(title, "OverlapStart_")) {
      overlap = overlap == m_overlap.end() ? m_overlap.begin() : overlap + 1;
      continue;
    }
    if (titlecmp(title, "OverlapEnd", n) == 0) return 0;
    FLD_ASSERT(overlap != m_overlap.end(), "fld", "int FLDFile::seekFLD()");
    read_int(stream);
    if (title_starts_with(title, "LS_Scalar:")) {
      FLDV4_Scalar_SEEK(stream, offset, title, overlap->m_scalars.own());
    } else if (title_starts_with(title, "LS_Vector:")) {
      FLDV4_Vector_SEEK(stream, offset, title, overlap->m_vectors.own(), m_dimension);
    } else {
      FLDV4_I_SKIP(stream);
    }
  }
}

void FLDFile::take_noted_sections() {
  for (size_t i = 0; i < noted_.size(); ++i) {
    m_overlap[i].m_scalars.append(noted_[i].m_scalars);
    m_overlap[i].m_vectors.append(noted_[i].m_vectors);
  }
  noted_ = {};
}

bool FLDFile::hasGeometry() const {
  return any_of(m_overlap, &FLDSEEKOverlap::m_hasGeometry);
}
bool FLDFile::hasALE() const {
  return any_of(m_overlap, &FLDSEEKOverlap::m_hasALE);
}
bool FLDFile::hasOverset() const {
  return any_of(m_overlap, &FLDSEEKOverlap::m_hasOverset);
}

const FLDTITLE_Scalar* FLDFile::findSeekScalar(const char* name, int ioverlap) const {
  if (ioverlap < 0 || static_cast<size_t>(ioverlap) >= m_overlap.size()) return nullptr;
  return find_title(m_overlap[static_cast<size_t>(ioverlap)].m_scalars, name);
}

const FLDTITLE_Vector* FLDFile::findSeekVector(const char* name, int ioverlap) const {
  if (ioverlap < 0 || static_cast<size_t>(ioverlap) >= m_overlap.size()) return nullptr;
  return find_title(m_overlap[static_cast<size_t>(ioverlap)].m_vectors, name);
}

}  // namespace fld
