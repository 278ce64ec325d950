// Opening a dataset: finds and validates the files of the series, indexes them and reads the geometry of the
// first one. The globals are only replaced if everything succeeds.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <sys/stat.h>

#include "dataset/type_counts.h"
#include "interface/userd_api.h"
#include "reader/globals.h"
#include "reader/work_tables.h"
#include "support/tracked_allocation.h"

namespace fld {

namespace {

void keep_path(char (&buffer)[kPathBuffer], const char* path) {
  strncpy(buffer, path, kPathBuffer - 1);
  buffer[kPathBuffer - 1] = '\0';
}

// Whether every file has to be indexed. A motion requires it and switches the simplifying option off
// permanently.
bool wants_full_index(const FLD& dataset) {
  if (std::any_of(dataset.m_fld.begin(), dataset.m_fld.end(),
                  [](const FLDFile& file) { return file.hasALE(); })) {
    Toggle_user[0] = 0;
  }
  return Toggle_user[0] == 0;
}

// The geometry of every region set of the first file; null if one cannot be read.
smart_ptr<Geometry> read_first_geometry(const FLD& dataset) {
  auto geometry = make_smart<Geometry>();
  const FLDFile& first = dataset.m_fld.front();
  BadIndices bad;
  for (size_t j = 0; j < first.m_overlap.size(); ++j) {
    FLDGEO geo;
    if (first.readGeometry(static_cast<int>(j), geo) != 0) {
      fputs("FAILED TO READ GEOMETRY.\n", stderr);
      return {};
    }
    bad += count_bad_indices(geo);
    geometry->geos.push_back(std::move(geo));
    geometry->loadedStep.push_back(0);
  }
  report_bad_indices(bad, first.m_path);
  return geometry;
}

}  // namespace

}  // namespace fld

using namespace fld;

int USERD_set_filenames(char* filename1, char* filename2, char* /*directory*/, int /*swap_bytes*/) {
  const std::string path = filename1 != nullptr ? filename1 : "";
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0) {
    fprintf(stderr, "FILE NOT FOUND : %s\n", path.c_str());
    return -1;
  }
  keep_path(Geom_file, path.c_str());
  keep_path(Resu_file, filename2 != nullptr ? filename2 : "");
  set_memory();
  auto dataset = make_smart<FLD>();
  if (dataset->searchFLD(path.c_str()) != 0) return -1;
  if (dataset->seekFLD(wants_full_index(*dataset)) != 0) return -1;
  smart_ptr<Geometry> geometry = read_first_geometry(*dataset);
  if (!geometry) return -1;
  if (allocMemoryForGeometry(geometry) != 0) {
    fputs("error : failed to allocate memory for geometry.\n", stderr);
    return -1;
  }
  fputs("read done\n", stderr);
  g_fld = std::move(dataset);
  g_fldgeo = std::move(geometry);
  clear_cached_quantities();
  return 1;
}
