#include "page/rigid_motion.h"

#include <cmath>
#include <cstddef>
#include <vtkLandmarkTransform.h>
#include <vtkMatrix4x4.h>
#include <vtkNew.h>
#include <vtkPoints.h>

namespace page {
namespace {

// So many points, spread over all of them, tell the motion; all are compared.
constexpr std::size_t kLandmarks = 1000;
constexpr std::size_t kFewestPoints = 3;

void take_landmarks(const std::vector<float>& from, vtkPoints* points) {
  const std::size_t count = from.size() / 3;
  const std::size_t stride = count / kLandmarks + 1;
  points->SetDataTypeToDouble();
  for (std::size_t i = 0; i < count; i += stride)
    points->InsertNextPoint(static_cast<double>(from[3 * i]), static_cast<double>(from[3 * i + 1]),
                            static_cast<double>(from[3 * i + 2]));
}

bool arrives(const Matrix& m, const std::vector<float>& from, const std::vector<float>& to,
             double tolerance) {
  for (std::size_t i = 0; i < from.size(); i += 3) {
    const auto x = static_cast<double>(from[i]);
    const auto y = static_cast<double>(from[i + 1]);
    const auto z = static_cast<double>(from[i + 2]);
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const std::size_t row = 4 * axis;
      const double moved = m[row] * x + m[row + 1] * y + m[row + 2] * z + m[row + 3];
      if (!(std::abs(moved - static_cast<double>(to[i + axis])) <= tolerance)) return false;
    }
  }
  return true;
}

}  // namespace

std::optional<Matrix> find_rigid_motion(const std::vector<float>& from, const std::vector<float>& to,
                                        double tolerance) {
  if (from.size() != to.size() || from.size() < 3 * kFewestPoints) return std::nullopt;
  vtkNew<vtkPoints> sources;
  vtkNew<vtkPoints> targets;
  take_landmarks(from, sources);
  take_landmarks(to, targets);
  vtkNew<vtkLandmarkTransform> transform;
  transform->SetModeToRigidBody();
  transform->SetSourceLandmarks(sources);
  transform->SetTargetLandmarks(targets);
  transform->Update();
  Matrix matrix{};
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 4; ++column)
      matrix[static_cast<std::size_t>(4 * row + column)] = transform->GetMatrix()->GetElement(row, column);
  }
  if (!arrives(matrix, from, to, tolerance)) return std::nullopt;
  return matrix;
}

}  // namespace page
