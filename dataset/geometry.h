// The geometry of a dataset: one FLDGEO per region set.
#pragma once

#include <vector>

#include "dataset/fldgeo.h"

namespace fld {

// In place of a file's index: of a geometry that is not, or not wholly, that of one file.
inline constexpr int kNoFile = -1;

class Geometry {
 public:
  // Sums over all region sets.
  unsigned long nsurface() const;
  unsigned long nvolume() const;
  unsigned long nmat() const;

  // The i-th surface (volume) from 0 when the lists of all region sets are laid end to end; `geoIndex`
  // becomes the index of the region set that holds it. Past the end: empty, with `geoIndex` unchanged.
  smart_ptr<SurfaceGeometry> getSurfaceGeometry(unsigned long i, int& geoIndex) const;
  smart_ptr<VolumeGeometry> getVolumeGeometry(unsigned long i, int& geoIndex) const;

  std::vector<FLDGEO> geos;
  std::vector<int> loadedStep;  // per region set, the file whose geometry it holds, or kNoFile
};

}  // namespace fld
