// The values of quantities at points.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "analysis/mesh_locator.h"
#include "host/session.h"
#include "tool/coordinate_names.h"
#include "tool/problems.h"
#include "tool/quantity.h"

namespace tool {

// Whether a point has an answer.
enum class PointFound : char {
  inside,
  blanked,  // inside elements of overset meshes alone that have a blanked node
  outside,
};
const char* found_word(PointFound found);

// The answers at one step: a row per point.
struct ProbedStep {
  std::vector<PointFound> found;
  std::vector<int> region_set;        // of the element that answers; -1 without one
  std::vector<std::int64_t> element;  // its number in the whole mesh of the region set, from 1; 0 without one
  std::vector<double> values;         // rows of columns; NaN where undefined or without an answer
};

// A column of values: a scalar, or one component or the magnitude of a vector.
struct ProbeColumn {
  std::size_t quantity = 0;
  std::optional<int> component;  // kMagnitude is the magnitude
  std::string name;              // UTF-8 without control characters: "Velocity_x"
};

class Prober {
 public:
  Prober(host::Session& session, std::vector<Quantity> quantities, std::vector<analysis::Vec3> points);
  Prober(const Prober&) = delete;
  Prober& operator=(const Prober&) = delete;

  const std::vector<ProbeColumn>& columns() const { return columns_; }

  // Finds the elements at the session's step. Values do this when the geometry is another one, but before
  // other processes are made it is done once for all. Throws host::Error.
  void locate();

  // The values at the session's step. Quantities that cannot be read are NaN, and noted as problems. Throws
  // host::Error when the mesh cannot be read.
  ProbedStep probe(Problems& problems);

 private:
  using PartComponents = std::array<host::HostArray, 3>;  // of a quantity; those that are not there are empty

  PartComponents read(const Quantity& quantity, int part, Problems& problems);
  bool is_blanked(const analysis::ElementAt& place, const std::vector<PartComponents>& values) const;
  void fill(const analysis::ElementAt& place, const std::vector<PartComponents>& values,
            std::span<double> row) const;

  host::Session& session_;
  std::vector<Quantity> quantities_;
  std::vector<analysis::Vec3> points_;
  std::vector<ProbeColumn> columns_;
  QuantityValues values_;
  CoordinateNames names_;
  std::optional<int> located_at_;                           // geometry step
  std::vector<std::vector<analysis::ElementAt>> elements_;  // per point, the smallest first
};

}  // namespace tool
