// The index of one region set of one file.
#pragma once

#include <cstdint>

#include "dataset/shared_list.h"
#include "format/ale.h"
#include "format/quantity_index.h"

namespace fld {

// The quantity sections of one region set, in file order.
struct FLDSEEK {
  SharedList<FLDTITLE_Scalar> m_scalars;
  SharedList<FLDTITLE_Vector> m_vectors;
};

// One region set of one file: its quantities, its motion and flags.
struct FLDSEEKOverlap : FLDSEEK {
  int64_t m_begin = 0;         // file offset of the region set's opening title
  ALE m_ale;                   // empty unless m_hasALE
  bool m_hasGeometry = false;  // it has node coordinates
  bool m_hasALE = false;       // it has a motion
  bool m_hasOverset = false;   // it has a scalar whose name begins with "@BNODE"
};

}  // namespace fld
