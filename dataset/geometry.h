// The geometry of a dataset: one FLDGEO per region set.
#pragma once

#include <vector>

#include "dataset/fldgeo.h"

namespace fld {

// In place of a file's index: the geometry is not that of a single file.
inline constexpr int kNoFile = -1;

class Geometry {
 public:
  // Sums over all region sets. These and the lookups take time proportional to the number of region sets.
  unsigned long nsurface() const;
  unsigned long nvolume() const;
  unsigned long nmat() const;

  // The i-th surface (volume), from 0, of the concatenated lists of all region sets. Sets `geoIndex` to its
  // region set. Past the end: returns null and leaves `geoIndex` unchanged.
  smart_ptr<SurfaceGeometry> getSurfaceGeometry(unsigned long i, int& geoIndex) const;
  smart_ptr<VolumeGeometry> getVolumeGeometry(unsigned long i, int& geoIndex) const;

  std::vector<FLDGEO> geos;
  std::vector<int> loadedStep;  // per region set, the index of the file whose geometry it holds, or kNoFile
};

}  // namespace fld
