// The outlines of all files of a series, for checks that concern more than one file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "inspect/byte_reader.h"
#include "inspect/findings.h"
#include "inspect/outline.h"
#include "inspect/section_check.h"
#include "inspect/series.h"

namespace inspect {

class DatasetOutline {
 public:
  // Walks over all files; one that cannot be read counts as empty.
  DatasetOutline(const std::vector<SeriesFile>& files, const Progress& progress);

  // Adds the findings about a file's header compared with the other files. `number` is its position in the
  // series, from 0.
  void check(std::size_t number, Findings& findings) const;
  // The number of nodes for which a quantity of a region set has values in a file.
  std::optional<std::int64_t> nodes_at(std::size_t number, std::int64_t region_set) const;
  // The file from which a motion with this base cycle starts. Reads the names of its volume regions. The
  // answer is valid until the next call.
  const std::optional<MotionBase>& motion_base(std::int32_t cycle, std::int64_t region_set,
                                               const Progress& progress);

 private:
  struct File {
    SeriesFile name;
    Outline outline{};
    bool is_readable = false;
  };

  std::optional<std::size_t> find_cycle(std::int32_t cycle) const;
  const RegionSetOutline* find_region_set(std::size_t number, std::int64_t region_set) const;

  std::vector<File> files_;
  bool is_transient_ = false;
  std::int32_t last_cycle_ = 0;  // the latest arguments and result of motion_base
  std::int64_t last_region_set_ = -1;
  std::optional<MotionBase> last_base_;
};

}  // namespace inspect
