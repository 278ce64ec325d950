#include "dataset/index_base.h"

#include <algorithm>
#include <cstdint>

#include "support/errors.h"

namespace fld {

namespace {

constexpr int kMaterials = 10000;  // material numbers are 0 to 9999

// Wraps on overflow: such an index is out of range before and after.
int without_bias(int index, int bias) {
  return static_cast<int>(static_cast<unsigned>(index) - static_cast<unsigned>(bias));
}

void subtract(int* indices, long n, int bias) {
  for (long i = 0; i < n; ++i) indices[i] = without_bias(indices[i], bias);
}

// Subtracts the bias and returns the range of the results. Works in blocks that fit the cache.
IndexRange subtract_and_measure(int* indices, long n, int bias) {
  constexpr long kBlock = 8192;
  IndexRange range = {0, -1};  // the range of an empty list
  for (long begin = 0; begin < n; begin += kBlock) {
    int* const block = indices + begin;
    const long length = std::min(kBlock, n - begin);
    if (bias != 0) subtract(block, length, bias);
    int smallest = range.smallest;
    int largest = range.largest;
    for (long i = 0; i < length; ++i) {
      smallest = std::min(smallest, block[i]);
      largest = std::max(largest, block[i]);
    }
    range = {smallest, largest};
  }
  return range;
}

void subtract_from_links(int* links, long n, int bias) {
  for (long i = 0; i < n; ++i) links[i] = links[i] == -1 ? -1 : without_bias(links[i], bias);
}

}  // namespace

void modifyIndicies(FLDGEO& geo, int bias, const LoadedSections& loaded) {
  if (loaded.elements) {
    geo.elements->conn_range = subtract_and_measure(geo.elements->conn, geo.elements->nconn, bias);
  }
  if (bias == 0) return;
  if (loaded.surfaces) {
    for (auto& surface : geo.surfaces) {
      subtract(surface->faceNode, surface->nfaceNode, bias);
      subtract_from_links(surface->faceLink, surface->nface, bias);
    }
  }
  if (loaded.volumes) {
    for (auto& volume : geo.volumes) subtract(volume->elem, volume->nelem, bias);
  }
}

void modifyMAT(const smart_ptr<MatOfElements>& materials) {
  if (!materials || materials->nelem == 0) return;
  int* const begin = materials->mat;
  int* const end = begin + materials->nelem;
  const auto [smallest, largest] = std::minmax_element(begin, end);
  const int64_t shift = *smallest < 0 ? 1 - static_cast<int64_t>(*smallest) : 0;
  if (*largest + shift >= kMaterials) throw FLDReadException("MATERIAL NUMBER OUT OF RANGE.");
  if (shift == 0) return;
  for (int* mat = begin; mat != end; ++mat) *mat = static_cast<int>(*mat + shift);
}

std::vector<int> distinct_materials(const MatOfElements* materials) {
  std::vector<int> distinct;
  if (materials == nullptr) return distinct;
  std::vector<char> present(kMaterials, 0);
  for (int i = 0; i < materials->nelem; ++i) present[static_cast<size_t>(materials->mat[i])] = 1;
  for (int number = 0; number < kMaterials; ++number) {
    if (present[static_cast<size_t>(number)] != 0) distinct.push_back(number);
  }
  return distinct;
}

}  // namespace fld
