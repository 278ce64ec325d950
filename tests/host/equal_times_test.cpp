// Steps of one time show the mesh of their file.
#include "gtest/gtest.h"
#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "testkit/box_dataset.h"
#include "testkit/box_values.h"
#include "testkit/temporary_directory.h"
#include "tests/host/open_file.h"

namespace host_test {
namespace {

class EqualTimes : public testing::Test {
 protected:
  // Four files, of which the first three have the same time; those that `has_mesh` says have a box that is as
  // long as their number and one more.
  void write(const std::array<bool, 4>& has_mesh) {
    const double times[] = {0.0, 0.0, 0.0, 0.001};
    for (int step = 0; step < 4; ++step) {
      const auto index = static_cast<std::size_t>(step);
      testkit::BoxOptions options;
      options.cycle = step;
      options.time = times[index];
      options.lengths = {1.0 + step, 1.0, 1.0};
      testkit::write_file(has_mesh[index] ? testkit::box_file(options) : testkit::box_values_file(options),
                          directory_ / ("case_" + std::to_string(step) + ".fld"));
    }
  }
  // How long the box is at each step.
  std::vector<float> lengths(host::Session& session) {
    session.open(directory_ / "case_0.fld");
    std::vector<float> lengths;
    for (int step = 0; step < session.step_count(); ++step) {
      session.select_step(step);
      const host::Coordinates all = session.coordinates(static_cast<int>(session.parts().size()));
      float longest = 0.0F;
      for (std::size_t i = 0; i < all.size(); ++i) longest = std::max(longest, all.x()[i]);
      lengths.push_back(longest);
    }
    return lengths;
  }

  testkit::TemporaryDirectory directory_;
};

TEST_F(EqualTimes, ShowTheMeshOfTheirFile) {
  Reader reader;
  write({true, false, true, true});
  EXPECT_EQ(lengths(reader.session()), (std::vector<float>{1, 1, 3, 4}));
  write({true, true, false, true});
  EXPECT_EQ(lengths(reader.session()), (std::vector<float>{1, 2, 2, 4}));
  write({true, true, true, false});
  EXPECT_EQ(lengths(reader.session()), (std::vector<float>{1, 2, 3, 3}));
}

TEST_F(EqualTimes, AreToldApartWithTheFirstStepLoadedAtLast) {
  Reader reader;
  write({true, false, true, true});
  reader.session().open(directory_ / "case_0.fld");
  EXPECT_EQ(reader.session().step(), 0);
  EXPECT_EQ(reader.session().geometry_step_of(1), 0);
  EXPECT_EQ(reader.session().geometry_step_of(2), 1);
}

}  // namespace
}  // namespace host_test
