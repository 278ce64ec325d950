#include "dataset/field.h"

#include "dataset/fld_file.h"

namespace fld {

void Field::List::add(const FLDTITLE& title) {
  if (!known.insert(title.m_name).second) return;
  names.emplace_back(title.m_name);
  labels.emplace_back(title.m_label);
}

void Field::append(const FLDFile& file) {
  for (const FLDSEEKOverlap& overlap : file.m_overlap) {
    for (const FLDTITLE_Scalar& title : overlap.m_scalars) scalars_.add(title);
  }
  for (const FLDSEEKOverlap& overlap : file.m_overlap) {
    for (const FLDTITLE_Vector& title : overlap.m_vectors) vectors_.add(title);
  }
}

}  // namespace fld
