#include "tool/compared_dataset.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <vtkFloatArray.h>

#include "fmt/format.h"
#include "host/bounding_box.h"
#include "host/text_encoding.h"
#include "tool/chosen_parts.h"
#include "tool/exit_status.h"

namespace tool {
namespace {

constexpr double kSamePlace = 1e-5;  // of the size of the part

DatasetOptions with_file(DatasetOptions options, const std::string& file) {
  options.file = file;
  return options;
}

double size_of(const host::Coordinates& coordinates) {
  const auto box = host::bounding_box(coordinates);
  if (!box) return 0;
  double size = 0;
  for (std::size_t axis = 0; axis < 3; ++axis)
    size = std::max(size, static_cast<double>(box->highest[axis]) - static_cast<double>(box->lowest[axis]));
  return size;
}

bool are_near(std::span<const float> a, std::span<const float> b, double tolerance) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](float left, float right) {
    return left == right || std::abs(static_cast<double>(left) - static_cast<double>(right)) <= tolerance;
  });
}

}  // namespace

ComparedDataset::ComparedDataset(const DatasetOptions& options, const std::string& file)
    : dataset_(with_file(options, file), OpenDataset::Globals::own), values_(dataset_.session()) {}

vtkSmartPointer<vtkDataArray> ComparedDataset::difference(host::Session& session, int part,
                                                          const PictureScalar& scalar, vtkDataArray* shown) {
  host::Session& other_session = dataset_.session();
  const int steps = static_cast<int>(other_session.variable_times().times.size());
  if (session.step() >= steps)
    throw CommandError(ExitStatus::usage, file(),
                       fmt::format("there is no step {} to compare", session.step()));
  other_session.select_step(session.step());
  const int other = matching_part(session, part);
  require_same_nodes(session, part, other);
  const vtkSmartPointer<vtkDataArray> values = values_.of(matching_scalar(session, scalar), other);
  auto* a = vtkFloatArray::SafeDownCast(shown);
  auto* b = vtkFloatArray::SafeDownCast(values);
  if (a == nullptr || b == nullptr) return nullptr;
  if (a->GetNumberOfValues() != b->GetNumberOfValues())
    throw CommandError(ExitStatus::usage, file(), "the meshes differ: --compare needs the same elements");
  auto differences = vtkSmartPointer<vtkFloatArray>::New();
  differences->SetNumberOfValues(a->GetNumberOfValues());
  for (vtkIdType i = 0; i < a->GetNumberOfValues(); ++i)
    differences->SetValue(i, a->GetValue(i) - b->GetValue(i));
  return differences;
}

int ComparedDataset::matching_part(const host::Session& session, int part) {
  const auto identities = part_identities(session);
  const auto numbers = part_numbers(dataset_.session());
  const auto found = numbers.find(identities[static_cast<std::size_t>(part - 1)]);
  if (found != numbers.end()) return found->second;
  throw CommandError(
      ExitStatus::usage, file(),
      fmt::format("there is no part '{}' to compare", host::printable(session.part(part).name)));
}

PictureScalar ComparedDataset::matching_scalar(host::Session& session, const PictureScalar& scalar) {
  const host::Variable& wanted = session.variable(scalar.quantity.source_number());
  for (const host::Variable& variable : dataset_.session().variables()) {
    if (variable.name != wanted.name || variable.kind != wanted.kind || variable.location != wanted.location)
      continue;
    PictureScalar found = scalar;
    if (found.quantity.derived) {
      found.quantity.derived->variable = variable.number;
    } else {
      found.quantity.variable = variable;
    }
    return found;
  }
  throw CommandError(ExitStatus::usage, file(),
                     fmt::format("there is no variable '{}' to compare", host::printable(wanted.name)));
}

void ComparedDataset::require_same_nodes(host::Session& session, int part, int other) {
  const host::Coordinates a = session.coordinates(part);
  const host::Coordinates b = dataset_.session().coordinates(other);
  const double tolerance = kSamePlace * size_of(a);
  if (a.size() == b.size() && are_near(a.x(), b.x(), tolerance) && are_near(a.y(), b.y(), tolerance) &&
      are_near(a.z(), b.z(), tolerance))
    return;
  throw CommandError(
      ExitStatus::usage, file(),
      fmt::format("the meshes differ at part '{}': --compare needs the same nodes at the same places",
                  host::printable(session.part(part).name)));
}

}  // namespace tool
