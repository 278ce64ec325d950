// The two time sets, their steps, and updating the geometry to a step.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <utility>

#include "dataset/type_counts.h"
#include "interface/userd_api.h"
#include "reader/globals.h"
#include "reader/motion.h"
#include "reader/node_selection.h"
#include "reader/time_sets.h"
#include "reader/work_tables.h"
#include "support/assertion.h"

namespace fld {

namespace {

constexpr char kGeometrySetName[] = "timeset_geometry";
constexpr char kVariablesSetName[] = "timeset_variables";
constexpr size_t kSetDescription = 80;

const std::vector<FLDFile>& files() {
  static const std::vector<FLDFile> none;
  return g_fld ? g_fld->m_fld : none;
}

// Whether the file is a step of the time set.
bool is_step_of(int set, const FLDFile& file) {
  return set == kVariablesSet || (set == kGeometrySet && (file.hasGeometry() || file.hasALE()));
}

int count_steps(int set) {
  return static_cast<int>(std::count_if(files().begin(), files().end(),
                                        [set](const FLDFile& file) { return is_step_of(set, file); }));
}

// The index of the file of step `step` of the geometry's set, or -1.
int file_of_geometry_step(int step) {
  int steps = 0;
  for (size_t i = 0; i < files().size(); ++i) {
    if (is_step_of(kGeometrySet, files()[i]) && steps++ == step) return static_cast<int>(i);
  }
  return -1;
}

// Reads region set `g` of `file` into the current geometry and updates loadedStep: kNoFile after a partial
// read.
int read_region(const FLDFile& file, int g) {
  int& holder = g_fldgeo->loadedStep[static_cast<size_t>(g)];
  const int before = std::exchange(holder, kNoFile);
  const int result = file.readGeometry(g, g_fldgeo->geos[static_cast<size_t>(g)]);
  if (result == 0) {
    holder = g_fld->index_of(&file);
  } else if (result != kReadInPart) {
    holder = before;
  }
  return result;
}

// Reads region set `g` of file `reference`. If that has no node coordinates, first reads the nearest file
// that has: a motion must not start from coordinates that an earlier step has moved.
int reload_region(const FLDFile& reference, int g) {
  const auto region = static_cast<size_t>(g);
  if (region < reference.m_overlap.size() && !reference.m_overlap[region].m_hasGeometry) {
    const FLDFile* unmoved = g_fld->nearestGeometryFLDFile(g_fld->index_of(&reference), g);
    if (unmoved != nullptr) {
      const int result = read_region(*unmoved, g);
      if (result != 0) return result;
    }
  }
  return read_region(reference, g);
}

// Per file, the bad indices of the region sets that were loaded from it.
using BadIndicesByFile = std::map<int, BadIndices>;

// Updates region set `g` to the step of file `current`; false if its geometry cannot be read.
bool bring_region_to_step(int current, int g, BadIndicesByFile& bad) {
  const FLDFile* ref_fldfile = g_fld->refGeometryFLDFile(current, g);
  FLD_ASSERT(ref_fldfile, "fld_reader", "void USERD_set_time_set_and_step(int, int)");
  const int reference = g_fld->index_of(ref_fldfile);
  const auto region = static_cast<size_t>(g);
  const FLDSEEKOverlap& overlap = files()[static_cast<size_t>(current)].m_overlap[region];
  const bool read = (g_fld->m_anyALE && reference == current) || overlap.m_hasALE ||
                    g_fldgeo->loadedStep[region] != reference;
  if (read) {
    forget_parts();
    release_elements();
    int result = 0;
    try {
      result = reload_region(*ref_fldfile, g);
      if (result == 0) bad[reference] += count_bad_indices(g_fldgeo->geos[region]);
    } catch (...) {
      // Parts of the geometry may have been replaced.
      fit_work_tables(*g_fldgeo, g);
      throw;
    }
    fit_work_tables(*g_fldgeo, g);
    if (result != 0) {
      fprintf(stderr, "FAILED TO READ GEOMETRY DATA IN %s.\n", ref_fldfile->m_path.c_str());
      return false;
    }
  }
  if (overlap.m_hasALE) actALE(overlap.m_ale, g_fldgeo->geos[region], element_offsets(g));
  return true;
}

}  // namespace

}  // namespace fld

using namespace fld;

int USERD_get_number_of_timesets() {
  return Num_timesets;
}

int USERD_get_timeset_description(int set, char* text) {
  if (set == kGeometrySet) {
    memcpy(text, kGeometrySetName, sizeof kGeometrySetName);
  } else if (set == kVariablesSet) {
    memcpy(text, kVariablesSetName, sizeof kVariablesSetName);
  } else {
    memset(text, 0, kSetDescription);
  }
  return 1;
}

int USERD_get_geom_timeset_number() {
  return kGeometrySet;
}

int USERD_get_num_of_time_steps(int set) {
  const int count = count_steps(set);
  if (set >= 0 && set < kTimesetTable) Num_time_steps[set] = count;
  return count;
}

int USERD_get_sol_times(int set, float* times) {
  for (const FLDFile& file : files()) {
    if (!is_step_of(set, file)) continue;
    *times++ = g_fld->m_transient ? static_cast<float>(file.m_time) : static_cast<float>(file.m_cycle);
  }
  return 1;
}

void USERD_set_time_set_and_step(int set, int step) {
  if (step != Current_time_step || set != Current_timeset) clear_cached_quantities();
  Current_time_step = step;
  Current_timeset = set;
  if (set != kGeometrySet) return;
  const int current = file_of_geometry_step(step);
  if (current < 0) {
    fputs("error : not found geometry data in current time.\n", stderr);
    return;
  }
  const auto regions = static_cast<int>(g_fldgeo->loadedStep.size());
  BadIndicesByFile bad;
  for (int g = 0; g < regions && bring_region_to_step(current, g, bad); ++g) {
  }
  for (const auto& [file, counts] : bad) {
    report_bad_indices(counts, files()[static_cast<size_t>(file)].m_path);
  }
}

int USERD_get_changing_geometry_status() {
  if (files().empty()) return 1;
  if (count_steps(kGeometrySet) == 1) return 0;
  return std::any_of(files().begin(), files().end(), [](const FLDFile& file) { return file.hasOverset(); })
             ? 2
             : 1;
}
