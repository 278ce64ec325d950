// The fixture of the tests over the sample datasets: what a host gets is compared with the samples' formulas
// and with geometry.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "samples/sample_info.h"
#include "testkit/mesh.h"
#include "testkit/vec3.h"
#include "tests/reader/loaded_reader.h"

namespace reader_test {

class SampleTest : public LoadedReader {
 protected:
  using Writer = samples::SampleInfo (*)(const std::filesystem::path& directory);

  // Writes the sample and opens it, with a value of its own for undefined results.
  void open_sample(Writer write_sample);

  // The number of the part of that name; the first one when there are several.
  int part_named(const std::string& name) const;
  // The nodes of that part, of which there have to be some.
  Points nodes_of(const std::string& name) const;
  // The number of the variable whose description ends with the name in brackets.
  int variable_named(const std::string& name) const;

  Floats scalar_on(const std::string& variable, int part) const;
  // The three components at each node.
  Points vector_on(const std::string& variable, int part) const;

  // The volume of all solid elements of a part, of which none may be turned inside out.
  double volume_of(int part) const;
  // The volume inside a closed set of surfaces, and the sum of their vector areas.
  struct Enclosed {
    double volume = 0.0;
    testkit::Vec3 area{};
  };
  Enclosed enclosed_by(const std::vector<std::string>& surfaces) const;

  static constexpr float kUndefined = -1.0e10F;
};

// Every value as close as single precision allows, relative to `scale`.
void expect_close(const std::vector<double>& expected, const Floats& actual, double scale);

}  // namespace reader_test
