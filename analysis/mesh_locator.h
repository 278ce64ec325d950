// Finds the elements that contain points.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <vector>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>

#include "analysis/vec3.h"
#include "analysis/whole_meshes.h"
#include "host/session.h"

namespace analysis {

// An element that contains a point, and how its nodes share in a value there: the shape functions.
struct ElementAt {
  int part = 0;              // the whole mesh
  int region_set = 0;        // of it, from 0
  std::int64_t element = 0;  // in that part, from 0
  int nodes = 0;
  std::array<std::int32_t, 8> node{};  // of that part, from 0
  std::array<double, 8> weight{};
  double size = 0;  // the diagonal of the box around the element
};

// The whole meshes of one step, with a locator for each. Points that lie outside of a mesh by less than
// kTolerance times the diagonal of its box count as points of its surface: coordinates in single precision
// are not more exact than that.
class MeshLocator {
 public:
  static constexpr double kTolerance = 1e-6;

  // Reads the whole meshes of the session's step. Throws host::Error.
  MeshLocator(host::Session& session, const IsCylindrical& is_cylindrical);
  MeshLocator(const MeshLocator&) = delete;
  MeshLocator& operator=(const MeshLocator&) = delete;
  ~MeshLocator();

  // The element of each region set that contains the point, the smallest first; none outside of all.
  std::vector<ElementAt> find(const Vec3& point);

 private:
  struct Mesh;
  std::vector<std::unique_ptr<Mesh>> meshes_;
};

}  // namespace analysis
