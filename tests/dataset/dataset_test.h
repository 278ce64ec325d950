// Shared by the tests of this folder: files on disk, the reader's messages and assertions, arrays as lists.
#pragma once

#include <algorithm>
#include <array>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "dataset/fld_file.h"
#include "support/errors.h"
#include "support/tracked_allocation.h"
#include "testkit/file_writer.h"
#include "testkit/small_meshes.h"
#include "testkit/temporary_directory.h"

namespace fld::test {

// Collects stderr until text() is called.
class Messages {
 public:
  Messages() { testing::internal::CaptureStderr(); }
  ~Messages() {
    if (!taken_) testing::internal::GetCapturedStderr();
  }
  Messages(const Messages&) = delete;
  Messages& operator=(const Messages&) = delete;

  std::string text() {
    taken_ = true;
    return testing::internal::GetCapturedStderr();
  }

 private:
  bool taken_ = false;
};

// Triangles, quadrilaterals, tetrahedra, pyramids, prisms and hexahedra of a region or a whole mesh.
using Six = std::array<int, 6>;
template <class Region>
Six counts_of(const Region& region) {
  return {region.ntri, region.nquad, region.ntet, region.npyr, region.nprism, region.nhex};
}

// The line that traces the reading of a file.
inline std::string trace(const std::string& path) {
  return "IN ( FLD): " + path + "\n";
}

// The message of the FLDReadException that `call` throws.
template <class Call>
std::string read_error(Call call) {
  try {
    call();
  } catch (const FLDReadException& error) {
    return error.getMessage();
  }
  return "no FLDReadException";
}

// Writes the file into the directory and returns its path.
inline std::string write(const testkit::TemporaryDirectory& directory, std::string_view name,
                         const testkit::File& file, testkit::Places* places = nullptr) {
  const std::filesystem::path path = directory / name;
  testkit::Places written = testkit::write_file(file, path);
  if (places != nullptr) *places = std::move(written);
  return path.string();
}

// A valid file: one tetrahedron in one region set.
inline testkit::File plain_file(int cycle = 0, double time = 0.0) {
  testkit::File file = testkit::file_of(testkit::one_tetrahedron());
  file.header.set_cycle(cycle, time);
  return file;
}

// All kinds of elements and faces, on 8 nodes. The shapes overlap; only the indices matter here.
inline testkit::Mesh every_shape() {
  testkit::Mesh mesh;
  for (int i = 0; i < 8; ++i) mesh.nodes.add(i, i + 10, i + 20);
  mesh.elements.add(testkit::kTriangle, {0, 1, 2});
  mesh.elements.add(testkit::kQuadrilateral, {0, 1, 2, 3});
  mesh.elements.add(testkit::kTetrahedron, {0, 1, 2, 4});
  mesh.elements.add(testkit::kPyramid, {0, 1, 2, 3, 4});
  mesh.elements.add(testkit::kPrism, {0, 1, 2, 4, 5, 6});
  mesh.elements.add(testkit::kHexahedron, {0, 1, 2, 3, 4, 5, 6, 7});
  mesh.elements.add(testkit::kTetrahedron, {1, 2, 3, 5});
  mesh.materials = {1, 1, 2, 2, 30, 30, 2};
  testkit::Surface inlet{.name = "inlet"};
  inlet.add(testkit::kLineFace, {0, 1});
  inlet.add(testkit::kTriangleFace, {0, 1, 2}, 2);
  inlet.add(testkit::kQuadrilateralFace, {0, 1, 2, 3}, 5);
  testkit::Surface wall{.name = "wall"};
  wall.add(testkit::kTriangleFace, {4, 5, 6}, 4);
  mesh.surfaces = {inlet, wall};
  mesh.volumes = {{.name = "air", .elements = {0, 2, 6, 3}}, {.name = "solid", .elements = {4, 5, 1}}};
  return mesh;
}

// The file, validated.
inline FLDFile checked(const std::string& path) {
  FLDFile file(path);
  EXPECT_EQ(file.checkSections(), 0) << path;
  return file;
}

struct Reading {
  int status = 0;
  std::string messages;
};

inline Reading read_geometry(const FLDFile& file, int region, FLDGEO& geo) {
  Messages messages;
  const int status = file.readGeometry(region, geo);
  return {status, messages.text()};
}

// Whether this process has the file open.
inline bool is_open(const std::string& path) {
  const auto refers_to_it = [&](const std::filesystem::directory_entry& entry) {
    std::error_code closed_meanwhile;
    return std::filesystem::read_symlink(entry.path(), closed_meanwhile) == path;
  };
  const std::filesystem::directory_iterator files("/proc/self/fd");
  return std::any_of(begin(files), end(files), refers_to_it);
}

// Conversion between arrays of the geometry objects and lists.
inline std::vector<int> list(const int* values, long n) {
  return {values, values + n};
}
inline std::vector<double> list(const VFPA& values, int n) {
  std::vector<double> result(static_cast<size_t>(n));
  for (int i = 0; i < n; ++i) result[static_cast<size_t>(i)] = vfpa2double(values, i);
  return result;
}
inline int* tracked(const std::vector<int>& values) {
  auto* array = static_cast<int*>(cv_caloc(values.size(), sizeof(int), 1));
  std::copy(values.begin(), values.end(), array);
  return array;
}

// The regular expression that matches the C library's report of a failed assertion.
inline std::string assertion(std::string_view module, std::string_view function,
                             std::string_view expression) {
  const auto escaped = [](std::string_view text) {
    std::string result;
    for (const char c : text) {
      if (std::string_view("()*!.[]+?^$|{}\\").find(c) != std::string_view::npos) result += '\\';
      result += c;
    }
    return result;
  };
  return ": " + escaped(module) + ":[0-9]+: " + escaped(function) + ": Assertion `" + escaped(expression) +
         "' failed\\.";
}

// The statement ends the process through that report.
#define EXPECT_ASSERTION(statement, module, function, expression)             \
  EXPECT_EXIT(static_cast<void>(statement), testing::KilledBySignal(SIGABRT), \
              fld::test::assertion(module, function, expression))

}  // namespace fld::test
