// A VTKHDF file of a collection of grids over time, read as the format says, with HDF5 alone.
#pragma once

#include <cstdint>
#include <filesystem>
#include <hdf5.h>
#include <string>
#include <vector>

#include "vtkhdf/hdf5_file.h"

namespace vtkhdf_test {

// A block at a step.
struct Grid {
  std::vector<float> points;  // x, y, z of each
  std::vector<std::int64_t> offsets;
  std::vector<std::int64_t> connectivity;
  std::vector<std::uint8_t> types;
};

class Collection {
 public:
  explicit Collection(const std::filesystem::path& file);

  std::int64_t steps(const std::string& block) const;
  double time(const std::string& block, std::int64_t step) const;
  Grid grid(const std::string& block, std::int64_t step) const;
  // "PointData" or "CellData"; of a vector three values for each node or cell.
  std::vector<float> values(const std::string& block, const std::string& place, const std::string& name,
                            std::int64_t step) const;

  // Rows of an array below a block, and what it takes of the file.
  std::size_t rows(const std::string& block, const std::string& array) const;
  std::size_t stored_bytes(const std::string& block, const std::string& array) const;
  bool is_double(const std::string& block, const std::string& array) const;

  // The links below a group of the assembly, in their order; what a link leads to.
  std::vector<std::string> nodes(const std::string& folder) const;
  std::string block_of(const std::string& node) const;

 private:
  vtkhdf::Handle open(const std::string& block, const std::string& array) const;
  std::int64_t entry(const std::string& block, const std::string& array, std::int64_t at) const;
  std::int64_t step_entry(const std::string& block, const std::string& array, std::int64_t step) const {
    return entry(block, "Steps/" + array, step);
  }
  std::vector<std::int64_t> counts(const std::string& block, std::int64_t step) const;
  template <typename Value>
  std::vector<Value> read(const std::string& block, const std::string& array, hid_t type, std::int64_t first,
                          std::int64_t rows) const;

  vtkhdf::Handle file_;
};

}  // namespace vtkhdf_test
