// What the files of a series say about themselves, and what follows from that for each other.
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
  // Goes through the titles of all files; one that cannot be read counts as empty.
  DatasetOutline(const std::vector<SeriesFile>& files, const Progress& progress);

  // Adds what is wrong with a file's header beside the other files, by its number in the series, from 0.
  void check(std::size_t number, Findings& findings) const;
  // How many nodes a quantity of a region set has values for at a file.
  std::optional<std::int64_t> nodes_at(std::size_t number, std::int64_t region_set) const;
  // The file that a motion from this cycle starts from. Reads its names.
  std::optional<MotionBase> motion_base(std::int32_t cycle, std::int64_t region_set,
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
  std::int32_t last_cycle_ = 0;  // what motion_base was asked for last
  std::int64_t last_region_set_ = -1;
  std::optional<MotionBase> last_base_;
};

}  // namespace inspect
