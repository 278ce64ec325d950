// Shared by the readers of surface and volume regions: the list, the names, and the arrays that the array
// form of a section stores for all regions together.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <stdio.h>
#include <string>
#include <vector>

#include "format/data_block.h"
#include "format/read_checks.h"
#include "support/errors.h"
#include "support/smart_ptr.h"
#include "support/tracked_array.h"
#include "support/worker_threads.h"

namespace fld {

template <class Region>
using RegionList = std::vector<smart_ptr<Region>>;

// Reads a region count. Each region takes at least `bytes_each` bytes of the rest of the file.
int read_region_count(FILE* stream, size_t bytes_each);

// Reads the length of the region names, in characters.
int read_name_length(FILE* stream);

// The regions of a list are objects that hold their arrays, or layouts with the locations of the arrays.
template <class Region>
Region& region_of(smart_ptr<Region>& entry) {
  return *entry;
}
template <class RegionLayout>
RegionLayout& region_of(RegionLayout& entry) {
  return entry;
}

// Replaces the list with `count` new regions.
template <class Region>
void renew_regions(RegionList<Region>& list, int count) {
  list.resize(static_cast<size_t>(count));
  for (auto& region : list) region = make_smart<Region>();
}
template <class RegionLayout>
void renew_regions(std::vector<RegionLayout>& list, int count) {
  list.assign(static_cast<size_t>(count), {});
}

// Reads a character block of `length` characters as a name, without trailing blanks.
void take_name(FILE* stream, int length, int tag, char*& name);
void take_name(FILE* stream, int length, int tag, std::string& name);

// The name in the `length` characters at `characters`, without trailing blanks.
void copy_name(const char* characters, int length, int tag, char*& name);
void copy_name(const char* characters, int length, int tag, std::string& name);

// Char block with all names, region by region, stored in the member `name`.
template <class List>
void take_gathered_names(FILE* stream, List& list, int length, int tag_all, int tag_each) {
  const auto total = static_cast<int64_t>(list.size()) * length;
  check_count(stream, total, 1);
  if (total > std::numeric_limits<int>::max()) throw FLDReadException("TOO MANY CHARACTERS IN REGION NAMES.");
  const auto names = make_tracked_array<char>(static_cast<size_t>(total) + 1, tag_all);
  FLDV4_I_CHARarray(stream, static_cast<int>(total), names.get());
  const char* next = names.get();
  for (auto& region : list) {
    copy_name(next, length, tag_each, region_of(region).name);
    next += length;
  }
}

// Int block with one count per region, stored in the member `count`.
template <class List, class Region>
void take_counts(FILE* stream, List& list, int Region::*count, int tag) {
  const auto counts = read_int_array(stream, static_cast<long>(list.size()), tag);
  for (size_t r = 0; r < list.size(); ++r) {
    check_count(stream, counts[r], sizeof(int));
    region_of(list[r]).*count = counts[r];
  }
}

// Int block with the entries of all regions, region by region. Each region gets a copy of its entries, or
// their location, in the member `entries`.
template <class Region>
void take_gathered(FILE* stream, RegionList<Region>& list, int Region::*count, int* Region::*entries,
                   int tag_all, int tag_each) {
  long total = 0;
  for (const auto& region : list) total += (*region).*count;
  const auto all = read_int_array(stream, total, tag_all);
  const int* next = all.get();
  for (auto& region : list) {
    const int n = (*region).*count;
    (*region).*entries = make_tracked_array<int>(static_cast<size_t>(n), tag_each).release();
    int* const copy = (*region).*entries;
    for_ranges(n, sizeof(int),
               [=](int64_t begin, int64_t end) { std::copy(next + begin, next + end, copy + begin); });
    next += n;
  }
}
template <class RegionLayout>
void take_gathered(FILE* stream, std::vector<RegionLayout>& list, int RegionLayout::*count,
                   ArrayLayout RegionLayout::*entries, int tag_all, int /*tag_each*/) {
  long total = 0;
  for (const RegionLayout& region : list) total += region.*count;
  ArrayLayout all;
  take_ints(stream, total, tag_all, all);
  long next = 0;
  for (RegionLayout& region : list) {
    region.*entries = all.stretch(next, region.*count);
    next += region.*count;
  }
}

}  // namespace fld
