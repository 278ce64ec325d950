// The fixture of the tests over the sample datasets, which compare the host's data with the formulas and with
// geometry.
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

  // Writes and opens the sample, with a distinct value for undefined results.
  void open_sample(Writer write_sample);

  // The number of the first part with this name.
  int part_named(const std::string& name) const;
  // The nodes of this part; there must be some.
  Points nodes_of(const std::string& name) const;
  // The number of the variable whose description ends with the name in parentheses.
  int variable_named(const std::string& name) const;

  Floats scalar_on(const std::string& variable, int part) const;
  // The three components at each node.
  Points vector_on(const std::string& variable, int part) const;

  // The volume of all solid elements of a part, none of which may be inverted.
  double volume_of(int part) const;
  // The volume inside a closed set of surfaces, and the sum of their vector areas.
  struct Enclosed {
    double volume = 0.0;
    testkit::Vec3 area{};
  };
  Enclosed enclosed_by(const std::vector<std::string>& surfaces) const;

  static constexpr float kUndefined = -1.0e10F;
};

// Every value within single precision, relative to `scale`.
void expect_close(const std::vector<double>& expected, const Floats& actual, double scale);

}  // namespace reader_test
