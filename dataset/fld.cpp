#include "dataset/fld.h"

#include <algorithm>
#include <cstdio>

#include "dataset/series.h"
#include "support/assertion.h"

namespace fld {

int FLD::searchFLD(const char* fldpath) {
  m_fld.clear();
  std::vector<std::string> files;
  if (searchFLD(fldpath, files) != 0) return -1;
  if (checkFLD(files, m_fld) != 0) return -2;
  m_transient = isTransient_inner(m_fld);
  return 0;
}

int FLD::searchFLD(const char* fldpath, std::vector<std::string>& files) const {
  FLD_ASSERT(fldpath, "fld", "int FLD::searchFLD(const char *, std::vector<std::string> &) const");
  const SeriesName name(fldpath);
  if (!name.has_fld_extension()) {
    fputs("error : invalid file extension.\n", stderr);
    return -2;
  }
  if (name.cycle.empty()) {
    files.assign(1, fldpath);
    return 0;
  }
  files = find_series(name.directory, name.base);
  return 0;
}

int FLD::checkFLD(const std::vector<std::string>& files, std::vector<FLDFile>& fld) const {
  for (const std::string& path : files) {
    FLDFile file(path);
    const int status = file.checkSections();
    if (status != 0) return status;
    const auto has_geometry = [](const FLDSEEKOverlap& overlap) { return overlap.m_hasGeometry; };
    if (fld.empty() && !std::all_of(file.m_overlap.begin(), file.m_overlap.end(), has_geometry)) {
      fputs("NOT FOUND GEOMETRY DATA IN THE FIRST FLD FILE\n", stderr);
      return -5;
    }
    fld.push_back(std::move(file));
  }
  return 0;
}

int FLD::seekFLD(bool full) {
  constexpr char kFunction[] = "int FLD::seekFLD(bool)";
  FLD_ASSERT(!m_fld.empty(), "fld", kFunction);
  const auto indexed_end = full ? m_fld.end() : m_fld.begin() + 1;
  for (auto file = m_fld.begin(); file != indexed_end; ++file) {
    if (file->seekFLD() != 0) return -1;
  }
  const auto it_s = m_fld.begin();
  for (auto it_d = indexed_end; it_d != m_fld.end(); ++it_d) {
    FLD_ASSERT(it_s->m_overlap.size() == it_d->m_overlap.size(), "fld", kFunction);
    for (size_t j = 0; j < it_s->m_overlap.size(); ++j) {
      static_cast<FLDSEEK&>(it_d->m_overlap[j]) = it_s->m_overlap[j];
    }
  }
  m_anyALE = std::any_of(m_fld.begin(), m_fld.end(), [](const FLDFile& file) { return file.hasALE(); });
  // The other files share the first one's names.
  std::for_each(m_fld.begin(), indexed_end, [this](const FLDFile& file) { m_field.append(file); });
  return 0;
}

bool FLD::isTransient_inner(const std::vector<FLDFile>& fld) const {
  return std::any_of(fld.begin(), fld.end(), [](const FLDFile& file) { return file.m_time > 0.0; });
}

const FLDFile* FLD::findFLDFileByCycle(int cycle) const {
  const auto found = std::find_if(m_fld.begin(), m_fld.end(),
                                  [cycle](const FLDFile& file) { return file.m_cycle == cycle; });
  return found == m_fld.end() ? nullptr : &*found;
}

const FLDFile* FLD::refGeometryFLDFile(int i, int ioverlap) const {
  if (static_cast<size_t>(i) >= m_fld.size()) return nullptr;
  const auto& overlaps = m_fld[static_cast<size_t>(i)].m_overlap;
  if (static_cast<size_t>(ioverlap) >= overlaps.size()) return nullptr;
  const FLDSEEKOverlap& overlap = overlaps[static_cast<size_t>(ioverlap)];
  if (overlap.m_hasALE) return findFLDFileByCycle(overlap.m_ale.base_cycle);
  return nearestGeometryFLDFile(i, ioverlap);
}

const FLDFile* FLD::nearestGeometryFLDFile(int i, int ioverlap) const {
  const auto region = static_cast<size_t>(ioverlap);
  for (auto j = static_cast<size_t>(i) + 1; j-- > 0;) {
    const FLDFile& file = m_fld[j];
    FLD_ASSERT_AS(region < file.m_overlap.size(),
                  "static_cast< size_t >( ioverlap ) < m_fld[i].m_overlap.size()", "fld",
                  "const FLDFile *FLD::refGeometryFLDFile(int, int) const");
    if (file.m_overlap[region].m_hasGeometry) return &file;
  }
  return nullptr;
}

}  // namespace fld
