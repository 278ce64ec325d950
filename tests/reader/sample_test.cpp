#include "tests/reader/sample_test.h"

#include <algorithm>
#include <span>

#include "host/element_slots.h"
#include "testkit/element_faces.h"

namespace reader_test {
namespace {

using testkit::Vec3;

Vec3 minus(const Vec3& a, const Vec3& b) {
  return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
Vec3 cross(const Vec3& a, const Vec3& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
double dot(const Vec3& a, const Vec3& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

// Twice the vector areas of triangles, and six times the volume between them and the origin.
struct Measure {
  Vec3 area{};
  double volume = 0.0;

  void add(const Vec3& a, const Vec3& b, const Vec3& c) {
    const Vec3 normal = cross(minus(b, a), minus(c, a));
    for (std::size_t i = 0; i < 3; ++i) area[i] += normal[i];
    volume += dot(a, cross(b, c));
  }
  // A face with three or more corners, as triangles around its centre.
  void add_face(std::span<const Vec3> corners) {
    Vec3 middle{};
    for (const Vec3& corner : corners) {
      for (std::size_t i = 0; i < 3; ++i) middle[i] += corner[i] / static_cast<double>(corners.size());
    }
    for (std::size_t j = 0; j < corners.size(); ++j) {
      add(middle, corners[j], corners[(j + 1) % corners.size()]);
    }
  }
};

int code_of_slot(int slot) {
  switch (slot) {
    case 14:
      return testkit::kTetrahedron;
    case 18:
      return testkit::kPyramid;
    case 22:
      return testkit::kPrism;
    case 26:
      return testkit::kHexahedron;
    default:
      return 0;
  }
}

Vec3 place(const Points& points, int node) {
  const auto& point = points[static_cast<std::size_t>(node) - 1];
  return {static_cast<double>(point[0]), static_cast<double>(point[1]), static_cast<double>(point[2])};
}

}  // namespace

void SampleTest::open_sample(Writer write_sample) {
  int request = 1;
  float undefined = kUndefined;
  api().get_extra_data(&request, nullptr, nullptr, nullptr, nullptr, &undefined);
  open(write_sample(in("")).file);
}

int SampleTest::part_named(const std::string& name) const {
  const auto names = host.part_names();
  const auto found = std::find(names.begin(), names.end(), name);
  EXPECT_NE(names.end(), found) << "no part " << name;
  return static_cast<int>(found - names.begin()) + 1;
}

Points SampleTest::nodes_of(const std::string& name) const {
  Points points = host.coordinates(part_named(name));
  EXPECT_FALSE(points.empty()) << name;
  return points;
}

int SampleTest::variable_named(const std::string& name) const {
  const auto variables = host.variables();
  const auto found = std::find_if(variables.begin(), variables.end(), [&](const VariableInfo& variable) {
    return variable.description.ends_with(" (" + name + ")");
  });
  EXPECT_NE(variables.end(), found) << "no variable " << name;
  return static_cast<int>(found - variables.begin()) + 1;
}

Floats SampleTest::scalar_on(const std::string& variable, int part) const {
  return host.scalar(variable_named(variable), part);
}

Points SampleTest::vector_on(const std::string& variable, int part) const {
  const int number = variable_named(variable);
  Points vectors(static_cast<std::size_t>(host.part(part).nodes));
  for (int component = 0; component < 3; ++component) {
    const Floats values = host.vector(number, part, component);
    for (std::size_t i = 0; i < vectors.size(); ++i)
      vectors[i][static_cast<std::size_t>(component)] = values[i];
  }
  return vectors;
}

double SampleTest::volume_of(int part) const {
  const Points points = host.coordinates(part);
  double total = 0.0;
  for (const auto& [slot, count] : host.part(part).elements) {
    for (const auto& row : host.rows(part, slot, count)) {
      Measure measure;
      for (const testkit::FaceCorners& face : testkit::faces_of(code_of_slot(slot))) {
        std::vector<Vec3> corners;
        corners.reserve(row.size());
        for (const int local : face) {
          if (local >= 0) corners.push_back(place(points, row[static_cast<std::size_t>(local)]));
        }
        measure.add_face(corners);
      }
      EXPECT_LT(0.0, measure.volume);
      total += measure.volume / 6.0;
    }
  }
  return total;
}

SampleTest::Enclosed SampleTest::enclosed_by(const std::vector<std::string>& surfaces) const {
  Measure measure;
  for (const std::string& name : surfaces) {
    const int part = part_named(name);
    const Points points = host.coordinates(part);
    for (const auto& [slot, count] : host.part(part).elements) {
      for (const auto& row : host.rows(part, slot, count)) {
        std::vector<Vec3> corners;
        corners.reserve(row.size());
        for (const int node : row) corners.push_back(place(points, node));
        measure.add_face(corners);
      }
    }
  }
  return {.volume = measure.volume / 6.0,
          .area = {measure.area[0] / 2.0, measure.area[1] / 2.0, measure.area[2] / 2.0}};
}

void expect_close(const std::vector<double>& expected, const Floats& actual, double scale) {
  ASSERT_EQ(expected.size(), actual.size());
  ASSERT_FALSE(expected.empty());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    ASSERT_NEAR(expected[i], static_cast<double>(actual[i]), 1.2e-7 * scale) << "node " << i;
  }
}

}  // namespace reader_test
