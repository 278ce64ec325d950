#include "dataset/index_base.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cstdint>

#include "support/errors.h"
#include "support/worker_threads.h"

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

void subtract_from_all(int* indices, long n, int bias) {
  for_ranges(n, sizeof(int), [=](long begin, long end) { subtract(indices + begin, end - begin, bias); });
}

IndexRange range_of_both(IndexRange a, IndexRange b) {
  return {std::min(a.smallest, b.smallest), std::max(a.largest, b.largest)};
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

IndexRange subtract_from_all_and_measure(int* indices, long n, int bias) {
  return combine_ranges(
      n, sizeof(int),
      [=](long begin, long end) { return subtract_and_measure(indices + begin, end - begin, bias); },
      range_of_both);
}

void subtract_from_links(int* links, long n, int bias) {
  for_ranges(n, sizeof(int), [=](long begin, long end) {
    for (long i = begin; i < end; ++i) links[i] = links[i] == -1 ? -1 : without_bias(links[i], bias);
  });
}

// The smallest and largest of `n` > 0 numbers.
IndexRange range_of(const int* numbers, long n) {
  return combine_ranges(
      n, sizeof(int),
      [=](long begin, long end) {
        const auto [smallest, largest] = std::minmax_element(numbers + begin, numbers + end);
        return IndexRange{*smallest, *largest};
      },
      range_of_both);
}

}  // namespace

void modifyIndicies(FLDGEO& geo, int bias, const LoadedSections& loaded) {
  if (loaded.elements) {
    geo.elements->conn_range = subtract_from_all_and_measure(geo.elements->conn, geo.elements->nconn, bias);
  }
  if (bias == 0) return;
  if (loaded.surfaces) {
    for (auto& surface : geo.surfaces) {
      subtract_from_all(surface->faceNode, surface->nfaceNode, bias);
      subtract_from_links(surface->faceLink, surface->nface, bias);
    }
  }
  if (loaded.volumes) {
    for (auto& volume : geo.volumes) subtract_from_all(volume->elem, volume->nelem, bias);
  }
}

void modifyMAT(const smart_ptr<MatOfElements>& materials) {
  if (!materials || materials->nelem == 0) return;
  int* const mat = materials->mat;
  const auto [smallest, largest] = range_of(mat, materials->nelem);
  const int64_t shift = smallest < 0 ? 1 - static_cast<int64_t>(smallest) : 0;
  if (largest + shift >= kMaterials) throw FLDReadException("MATERIAL NUMBER OUT OF RANGE.");
  if (shift == 0) return;
  for_ranges(materials->nelem, sizeof(int), [=](long begin, long end) {
    for (long e = begin; e < end; ++e) mat[e] = static_cast<int>(mat[e] + shift);
  });
}

std::vector<int> distinct_materials(const MatOfElements* materials) {
  std::vector<int> distinct;
  if (materials == nullptr) return distinct;
  using Present = std::bitset<kMaterials>;
  const int* const mat = materials->mat;
  const Present present = combine_ranges(
      materials->nelem, sizeof(int),
      [=](long begin, long end) {
        std::array<char, kMaterials> flags = {};  // faster to set than bits
        for (long e = begin; e < end; ++e) flags[static_cast<size_t>(mat[e])] = 1;
        Present numbers;
        for (size_t number = 0; number < flags.size(); ++number) numbers[number] = flags[number] != 0;
        return numbers;
      },
      [](const Present& a, const Present& b) { return a | b; });
  for (int number = 0; number < kMaterials; ++number) {
    if (present[static_cast<size_t>(number)]) distinct.push_back(number);
  }
  return distinct;
}

}  // namespace fld
